#include "render/FontTable.h"

#include <QHashFunctions>

#include <algorithm>

namespace tavrel {

size_t qHash(const FontSpec &spec, size_t seed) {
    return qHashMulti(seed, spec.name, spec.size, spec.bold, spec.italic, spec.underline);
}

QFont FontTable::makeFont(const FontSpec &spec) {
    QFont font(spec.name);
    // A zero or negative size would make Qt fall back to its default; keep the smallest
    // drawable size instead.
    font.setPixelSize(std::max(1, spec.size) * TwipsPerPoint);
    font.setBold(spec.bold);
    font.setItalic(spec.italic);
    font.setUnderline(spec.underline);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

int FontTable::indexOf(const FontSpec &spec) {
    const auto found = m_index.constFind(spec);
    if (found != m_index.constEnd())
        return found.value();
    QFont font = makeFont(spec);
    QFontMetricsF metrics(font);
    double narrowest = metrics.horizontalAdvance(QLatin1Char(' '));
    for (char c = '!'; c <= '~'; ++c)
        narrowest = std::min(narrowest, metrics.horizontalAdvance(QLatin1Char(c)));
    auto entry = std::unique_ptr<FontEntry>(
        new FontEntry{spec, font, metrics, metrics.ascent(), metrics.lineSpacing(), narrowest});
    const int index = int(m_entries.size());
    m_entries.push_back(std::move(entry));
    m_index.insert(spec, index);
    return index;
}

void FontTable::clear() {
    m_entries.clear();
    m_index.clear();
}

} // namespace tavrel
