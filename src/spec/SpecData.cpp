#include "spec/SpecData.h"

#include "base/RuntimeError.h"

#include <algorithm>
#include <limits>

namespace tavrel {

namespace {

const QChar carriageReturn = QLatin1Char('\r');
const QString htmlBreak = QStringLiteral(" <BR> ");
const QString rtfBreak = QStringLiteral(" \\line ");

// The list a running text is the blank-joined copy of.
ItemText listOf(ItemText running) {
    switch (running) {
    case ItemText::NoteCodesRunning:
        return ItemText::NoteCodes;
    case ItemText::NoteDescriptionsRunning:
        return ItemText::NoteDescriptions;
    case ItemText::OptionCodesRunning:
        return ItemText::OptionCodes;
    case ItemText::OptionDescriptionsRunning:
        return ItemText::OptionDescriptions;
    default:
        return ItemText::None;
    }
}

QString joinedWithBreaks(const QStringList &pieces, const QString &lineBreak) {
    QString text;
    for (const QString &piece : pieces)
        text += lineBreak + piece;
    return text;
}

} // namespace

QStringList listLines(const QString &joined) {
    return joined.isEmpty() ? QStringList() : joined.split(carriageReturn);
}

const QString *SifItem::stored(ItemText field) const {
    const auto at = std::lower_bound(m_texts.begin(), m_texts.end(), field,
                                     [](const StoredText &t, ItemText f) { return t.field < f; });
    return at != m_texts.end() && at->field == field ? &at->value : nullptr;
}

const QString &SifItem::text(ItemText field) const {
    static const QString none;
    const QString *value = stored(field);
    return value ? *value : none;
}

QString &SifItem::editText(ItemText field) {
    auto at = std::lower_bound(m_texts.begin(), m_texts.end(), field,
                               [](const StoredText &t, ItemText f) { return t.field < f; });
    if (at == m_texts.end() || at->field != field)
        at = m_texts.insert(at, StoredText{field, QString()});
    return at->value;
}

void SifItem::setText(ItemText field, QString value) {
    if (value.isEmpty() && !stored(field))
        return;
    editText(field) = std::move(value);
}

QString SifItem::runningText(ItemText field) const {
    if (const QString *pinned = stored(field))
        return *pinned;
    QString running = text(listOf(field));
    // The notes open with a heading line whose carriage return stays.
    const bool headed =
        field == ItemText::NoteCodesRunning || field == ItemText::NoteDescriptionsRunning;
    const qsizetype from = headed ? running.indexOf(carriageReturn) + 1 : 0;
    if (headed && from == 0)
        return running;
    for (qsizetype i = from; i < running.size(); ++i) {
        if (running.at(i) == carriageReturn)
            running[i] = QLatin1Char(' ');
    }
    return running;
}

QStringList usualLaterOptionLines(const QString &codes, const QString &descriptions) {
    const QStringList codeLines = listLines(codes);
    const QStringList descriptionLines = listLines(descriptions);
    QStringList later;
    for (qsizetype i = 1; i < codeLines.size() || i < descriptionLines.size(); ++i) {
        if (i < codeLines.size())
            later.append(codeLines.at(i));
        if (i < descriptionLines.size())
            later.append(descriptionLines.at(i));
    }
    return later;
}

QStringList SifItem::optionLaterLines() const {
    if (const QString *pinned = stored(ItemText::OptionLaterLines))
        return listLines(*pinned);
    return usualLaterOptionLines(optionCodes(), optionDescriptions());
}

void SifItem::replaceOptions(QString codes, QString descriptions) {
    // What the item read keeps its running texts and HTML lines; only the lists change.
    const QString codesRunning = runningText(ItemText::OptionCodesRunning);
    const QString descriptionsRunning = runningText(ItemText::OptionDescriptionsRunning);
    const QString later = optionLaterLines().join(carriageReturn);
    editText(ItemText::OptionCodesRunning) = codesRunning;
    editText(ItemText::OptionDescriptionsRunning) = descriptionsRunning;
    editText(ItemText::OptionLaterLines) = later;
    setText(ItemText::OptionCodes, std::move(codes));
    setText(ItemText::OptionDescriptions, std::move(descriptions));
}

void SifItem::squeeze() {
    for (StoredText &stored : m_texts)
        stored.value.squeeze();
    m_texts.shrink_to_fit();
}

SifItemTexts SifItemTexts::of(const SifItem &item) {
    SifItemTexts texts;
    const QStringList later = item.optionLaterLines();
    texts.optionHtml = joinedWithBreaks(later, htmlBreak);
    texts.optionRtf = joinedWithBreaks(later, rtfBreak);
    texts.noteCodeHtml = QString(item.noteCodes()).replace(carriageReturn, htmlBreak);
    texts.noteCodeRtf = QString(item.noteCodes()).replace(carriageReturn, rtfBreak);
    texts.noteTextHtml = QString(item.noteDescriptions()).replace(carriageReturn, htmlBreak);
    texts.noteTextRtf = QString(item.noteDescriptions()).replace(carriageReturn, rtfBreak);
    return texts;
}

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

int SpecData::appendItem() {
    // The item count is a 32-bit number.
    if (itemCount() == std::numeric_limits<int>::max())
        throw RuntimeError(ErrorNumber::Overflow);
    // std::vector grows geometrically, so adding items one at a time stays linear overall.
    m_items.emplace_back();
    return itemCount();
}

void SpecData::reserve(int items) {
    if (items <= 0)
        return;
    m_items.reserve(std::size_t(items));
}

void SpecData::clear() {
    m_items.clear();
    header = SifHeader();
}

} // namespace tavrel
