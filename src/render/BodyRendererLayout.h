#pragma once

#include "base/ColorNumber.h"
#include "render/BodyRendererCells.h"
#include "templates/PrintDefinitions.h"

#include <QString>

#include <vector>

namespace tavrel {

struct OtherInfo;
struct PrintRect;
struct ReportData;

// The spacing of the body pages, and the geometry of the caption row and of the code /
// description pairs, apart from the drawing.
namespace BodyLayout {

// Text sits this far inside its column on either side, so that neighbouring columns never touch.
constexpr double CellInset = 40;
// Above and below the tallest cell of an item row.
constexpr double RowPadding = 30;
// Above and below each option or option-note line.
constexpr double SubLinePadding = 10;
// Between the caption row's lowest box and its rule, and from there to the first row.
constexpr double CaptionRuleGap = 30;
constexpr double FirstRowGap = 60;
// Between the last row and the totals section.
constexpr double TotalsGap = 60;
constexpr double CaptionRuleWidth = 15;
constexpr ColorNumber CaptionRuleColor = 0x404040;
// The hairline under every item with its lines.
constexpr double ItemRuleWidth = 5;
constexpr ColorNumber ItemRuleColor = 0xC8C8C8;
// A subtotal row: space above it, a light shade behind it and a rule over it.
constexpr double SubtotalGap = 60;
constexpr ColorNumber SubtotalShade = 0xF0F0F0;
constexpr double SubtotalRuleWidth = 10;
// Status bitmaps and the tax icon print at this size.
inline QString iconSize() {
    return QStringLiteral("75%");
}

// The width wrapped text gets in a column of the given width.
double textWidth(double columnWidth);

// The top of the totals section in the template: the smallest top among the total boxes, or the
// largest value when there are none.
qint32 totalsTop(const std::vector<CustomTemplate> &totalBoxes);

// The lowest bottom of the body columns in the template (the caption row), 0 without columns.
qint32 captionRowBottom(const std::vector<CustomTemplate> &columns);

// Whether a rectangle of a body template frames the totals section rather than the page: there
// are total boxes and it starts below the caption row. Such a rectangle is drawn once, where
// the totals print, at its designed distance from their top; the others on every page.
bool framesTotals(const PrintRect &rect, qint32 totalsTop, qint32 captionRowBottom);

// The code and description widths of an option pair ("Option Code / Description") or a note
// pair ("Option Note Code / Description"): the template's Real* widths; when a pair has none,
// a third of the column for the code and the rest for the description.
struct PairWidths {
    double code = 0;
    double description = 0;
};
PairWidths pairWidths(const CustomTemplate &box, bool notes, const OtherInfo &other);

// One text of the caption row: offset from the column's left, the width it has, and whether it
// is left-aligned whatever the column's alignment (the two halves of a split caption).
struct CaptionPiece {
    QString text;
    double offset = 0;
    double width = 0;
    bool alignLeft = false;
};
// The caption of a column in the caption row: the user's label of its field (when labels are
// shown and it has one), otherwise the caption itself.
QString columnCaption(const CustomTemplate &box, const ReportData &data);

// The caption row texts of a column: its caption text, or a pair column's caption split in two
// ("Option" / "Option Description", "Note" / "Note Description").
std::vector<CaptionPiece> captionPieces(const CustomTemplate &box, BodyColumnKind kind,
                                        const OtherInfo &other, const QString &captionText);

// The parts of a sub-line a column shows.
enum class SubLinePart { Code, Description, Both };
SubLinePart subLinePart(BodyColumnKind kind);

} // namespace BodyLayout

} // namespace tavrel
