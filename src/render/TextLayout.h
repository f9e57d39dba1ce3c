#pragma once

#include "render/DisplayList.h"
#include "render/FontTable.h"

#include <QString>

#include <vector>

namespace tavrel {

struct LaidOutText {
    std::vector<TextLine> lines;
    double height = 0; // number of lines x the font's line spacing
    double width = 0;  // the widest line
};

// The one text layout of the engine, used alike by measuring (CalcParagraph, TextHeight,
// TextWidth) and by drawing (TextBox, Paragraph).
// Carriage returns, line feeds and CR LF pairs end a line; every break starts a new line, so
// "A\r\rB" is three lines. With wrapping, a line is broken at word boundaries to fit the width,
// and a word longer than the width is broken inside the word. A width of 0 or less, or no
// wrapping, keeps each line whole. An empty text has no lines and no height.
LaidOutText layoutText(const QString &text, const FontEntry &font, double width, bool wrap);

// How many characters of a text can at most show in a box of this font and width, from the
// box's top, on paper whose longer side is paperExtent twips: the lines that fit the paper's
// length, each as long as the box's width (the paper's, unwrapped or wider) holds characters
// of half the font's narrowest printable ASCII advance, and its line break. No text that can
// show is longer; a longer text has nothing visible beyond this length, so cutting it here
// keeps layout bounded in memory and time and leaves what prints unchanged. Never more than
// MaxVisibleLength.
constexpr qsizetype MaxVisibleLength = qsizetype(1) << 21;
qsizetype visibleLengthBound(const FontEntry &font, double width, bool wrap, double paperExtent);
// text, or its first visibleLengthBound characters (never splitting a surrogate pair).
QString visiblePart(const QString &text, const FontEntry &font, double width, bool wrap,
                    double paperExtent);

} // namespace tavrel
