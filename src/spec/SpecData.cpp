#include "spec/SpecData.h"

#include "base/RuntimeError.h"

#include <limits>

namespace tavrel {

std::size_t SpecData::slot(int index) const {
    if (index < 1 || index > itemCount())
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    return std::size_t(index - 1);
}

SifItem &SpecData::item(int index) {
    return m_items[slot(index)];
}

const SifItem &SpecData::item(int index) const {
    return m_items[slot(index)];
}

SifItemTexts &SpecData::texts(int index) {
    return m_texts[slot(index)];
}

const SifItemTexts &SpecData::texts(int index) const {
    return m_texts[slot(index)];
}

int SpecData::appendItem() {
    // The item count is a 32-bit number.
    if (itemCount() == std::numeric_limits<int>::max())
        throw RuntimeError(ErrorNumber::Overflow);
    // std::vector grows geometrically, so adding items one at a time stays linear overall.
    m_items.emplace_back();
    m_texts.emplace_back();
    return itemCount();
}

void SpecData::reserve(int items) {
    if (items <= 0)
        return;
    m_items.reserve(std::size_t(items));
    m_texts.reserve(std::size_t(items));
}

void SpecData::clear() {
    m_items.clear();
    m_texts.clear();
    header = SifHeader();
}

} // namespace tavrel
