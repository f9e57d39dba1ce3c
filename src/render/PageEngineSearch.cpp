#include "render/PageEngine.h"

#include <algorithm>

namespace tavrel {

// Find works on the recorded lines, so it finds exactly what the pages show. Each occurrence
// counts: a line holding the text twice gives two matches, one after the other.
std::optional<TextMatch> PageEngine::FindText(const QString &text, int fromPage, bool caseSensitive,
                                              int skipOnFromPage) const {
    trace("FindText");
    if (text.isEmpty())
        return std::nullopt;
    const Qt::CaseSensitivity cs = caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive;
    const int first = std::max(1, fromPage);
    for (int number = first; number <= int(m_pages.size()); ++number) {
        int skip = number == first ? std::max(0, skipOnFromPage) : 0;
        int index = 0;
        for (const PageItem &pageItem : m_pages[std::size_t(number - 1)].items) {
            const auto *item = std::get_if<TextItem>(&pageItem);
            if (!item)
                continue;
            const FontEntry &font = m_fonts.at(item->font);
            for (std::size_t i = 0; i < item->lines.size(); ++i) {
                const TextLine &line = item->lines[i];
                const QStringView lineText = QStringView(item->text).mid(line.start, line.length);
                for (qsizetype at = lineText.indexOf(text, 0, cs); at >= 0;
                     at = lineText.indexOf(text, at + text.size(), cs), ++index) {
                    if (skip > 0) {
                        --skip;
                        continue;
                    }
                    const double lineLeft =
                        item->x + horizontalOffset(item->align, item->width, line.width);
                    const double before =
                        font.metrics.horizontalAdvance(lineText.left(at).toString());
                    const double matched =
                        font.metrics.horizontalAdvance(lineText.mid(at, text.size()).toString());
                    const double top = item->textTop + double(i) * font.lineSpacing;
                    return TextMatch{
                        number, QRectF(lineLeft + before, top, matched, font.lineSpacing), index};
                }
            }
        }
    }
    return std::nullopt;
}

} // namespace tavrel
