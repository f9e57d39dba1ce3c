#include "render/TextLayout.h"

#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <cmath>

namespace tavrel {

namespace {

bool isBreak(QChar c) {
    return c == QLatin1Char('\r') || c == QLatin1Char('\n');
}

// Lays out one paragraph (no line breaks inside) that does not fit the width.
void wrapParagraph(const QString &text, qsizetype start, qsizetype length, const FontEntry &font,
                   double width, LaidOutText &out) {
    const QString paragraph = text.mid(start, length);
    QTextLayout layout(paragraph, font.font);
    QTextOption option(Qt::AlignLeft | Qt::AlignTop);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.setCacheEnabled(false);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        qsizetype lineStart = line.textStart();
        qsizetype lineLength = line.textLength();
        // Blanks at a wrap point belong to no line's visible text.
        while (lineLength > 0 && paragraph.at(lineStart + lineLength - 1).isSpace())
            --lineLength;
        const double lineWidth = line.naturalTextWidth();
        out.lines.push_back({qint32(start + lineStart), qint32(lineLength), float(lineWidth)});
        out.width = std::max(out.width, lineWidth);
    }
    layout.endLayout();
}

} // namespace

qsizetype visibleLengthBound(const FontEntry &font, double width, bool wrap, double paperExtent) {
    const double extent = std::max(1.0, paperExtent);
    const double lineSpacing = std::max(1.0, font.lineSpacing);
    const double narrowest = std::max(0.5, font.narrowestAdvance / 2);
    const double lineWidth = wrap && width > 0 ? std::min(width, extent) : extent;
    const double lines = std::ceil(extent / lineSpacing) + 1;
    const double perLine = std::ceil(lineWidth / narrowest) + 1 + 2; // CR LF ends a line
    const double bound = lines * perLine;
    return bound >= double(MaxVisibleLength) ? MaxVisibleLength : qsizetype(bound);
}

QString visiblePart(const QString &text, const FontEntry &font, double width, bool wrap,
                    double paperExtent) {
    qsizetype bound = visibleLengthBound(font, width, wrap, paperExtent);
    if (text.size() <= bound)
        return text;
    if (bound > 0 && text.at(bound - 1).isHighSurrogate())
        --bound;
    return text.left(bound);
}

LaidOutText layoutText(const QString &text, const FontEntry &font, double width, bool wrap) {
    LaidOutText out;
    const qsizetype size = text.size();
    if (size == 0)
        return out;
    const bool wrapping = wrap && width > 0;
    qsizetype start = 0;
    while (true) {
        qsizetype end = start;
        while (end < size && !isBreak(text.at(end)))
            ++end;
        const qsizetype length = end - start;
        if (length == 0) {
            out.lines.push_back({qint32(start), 0, 0});
        } else {
            // Most texts are one short line: one advance measurement settles them.
            const double advance = length == size
                                       ? font.metrics.horizontalAdvance(text)
                                       : font.metrics.horizontalAdvance(text.mid(start, length));
            if (!wrapping || advance <= width) {
                out.lines.push_back({qint32(start), qint32(length), float(advance)});
                out.width = std::max(out.width, advance);
            } else {
                wrapParagraph(text, start, length, font, width, out);
            }
        }
        if (end >= size)
            break;
        // CR LF is one break.
        if (text.at(end) == QLatin1Char('\r') && end + 1 < size &&
            text.at(end + 1) == QLatin1Char('\n'))
            ++end;
        start = end + 1;
        if (start >= size) {
            // A text ending in a break ends with an empty line.
            out.lines.push_back({qint32(start), 0, 0});
            break;
        }
    }
    out.height = double(out.lines.size()) * font.lineSpacing;
    return out;
}

} // namespace tavrel
