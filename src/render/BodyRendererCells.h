#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <utility>
#include <vector>

namespace tavrel {

struct SifHeader;
struct SifItem;
class SpecData;

// What a body column draws, decided by its caption.
enum class BodyColumnKind {
    Text,               // the cell text of the item, wrapped in the column
    Image,              // the item's picture at the template's ImageSize
    Complete,           // a status bitmap chosen by the cell value
    Taxable,            // the tax icon
    Options,            // "Option Code / Description": option lines under the item
    OptionCodes,        // "Option Code": the codes of the option lines
    OptionDescriptions, // "Option Description"
    Notes,              // "Option Note Code / Description": option-note lines under the item
    NoteCodes,          // "Option Note Code"
    NoteDescriptions,   // "Option Note Description"
};

BodyColumnKind bodyColumnKind(const QString &caption);
// Kinds that draw lines under the item instead of a cell in its row.
bool isSubLineKind(BodyColumnKind kind);
bool isOptionKind(BodyColumnKind kind);

// The texts the body pages print: one per column and record, and one per total box.
namespace BodyCellTexts {

// The cell text of a product item for a column caption. Amounts are formatted "##0.00",
// percentages "##0.00000" ("MG%" with "##0. 00000"); text fields are copied unchanged; a caption
// that names no item field gives an empty text.
QString cellText(const QString &caption, const SifItem &item);

// The cell text of a "SUBTOTAL" row: its text fields as for an item, its own amounts (the sums
// of its group) under the extended columns, and nothing under quantity, unit amounts and
// percentages.
QString subtotalCellText(const QString &caption, const SifItem &item);

// A "Total Cust%" or "Total Deal%" text: the fraction formatted "%##0.00000", trimmed, and its
// sign inverted (deliberate: the percentages read as reductions). Zero is left as formatted.
QString invertedPercentText(double fraction);

// What a total box of the body shows: the figure behind it, the BASIC pattern it is formatted
// with, whether it prints with its sign inverted (the discount percentages), and the item
// column it sums. Nothing for a caption that is no total of the body.
struct TotalAmount {
    double value = 0;
    QString pattern;
    bool inverted = false;
    QString summedColumn;
};
std::optional<TotalAmount> totalAmount(const QString &caption, const SifHeader &header);

// The value text of a total box, empty for a caption that is no total of the body.
QString totalText(const QString &caption, const SifHeader &header);

// Every option of the product items once, as the "Total Option / Description" box lists them:
// sorted by code, the first description kept for a code that repeats, lines with neither code
// nor description left out.
std::vector<std::pair<QString, QString>> distinctOptions(const SpecData &spec);

} // namespace BodyCellTexts

} // namespace tavrel
