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

} // namespace tavrel
