#pragma once

#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace tavrel {

struct ReportData;
class TemplateLayout;

// One cell of an exported sheet: the text the body prints, and for a numeric field the number
// behind it with the body's format, so that sums work in the spreadsheet.
struct SheetCell {
    QString text;
    std::optional<double> number;
    // The BASIC pattern the body formats the number with ("##0.00", "$#,##0.00", ...); empty
    // for a number the body prints as BASIC prints a Double (quantities).
    QString pattern;
    // The percentage totals print with their sign inverted: number already carries the
    // inverted sign, and a positive one shows "+" in front.
    bool signed_ = false;
};

enum class SheetRowKind {
    Caption,  // the column captions
    Item,     // a product item
    SubLine,  // an option or option-note line under the row before
    Subtotal, // a "SUBTOTAL" record
    Total,    // a line of the totals block
    Heading,  // a heading of the order sheet
    Field,    // a label and its value on the order sheet
};

struct SheetRow {
    SheetRowKind kind = SheetRowKind::Item;
    std::vector<SheetCell> cells; // as many as the sheet has columns, or fewer

    bool bold() const {
        return kind == SheetRowKind::Caption || kind == SheetRowKind::Subtotal ||
               kind == SheetRowKind::Heading;
    }
    // Option and note lines fold under their item.
    int outlineLevel() const { return kind == SheetRowKind::SubLine ? 1 : 0; }
};

// Hears the rows of a table, one at a time and in order.
using SheetRowSink = std::function<void(const SheetRow &row)>;

struct SheetTable {
    QString name;
    int columnCount = 0;
    std::vector<SheetRow> rows;
    // When set, the rows are made when asked for, instead of held in rows: every call hands
    // them all to the sink again. A big job's item list never stands in memory whole.
    std::function<void(const SheetRowSink &sink)> rowSource;

    void forEachRow(const SheetRowSink &sink) const {
        if (rowSource) {
            rowSource(sink);
            return;
        }
        for (const SheetRow &row : rows)
            sink(row);
    }
};

// What the body pages print, as rows and columns for the spreadsheet exports. The texts come
// from the same cell texts, captions and labels the body renderer draws; only the placing is
// the spreadsheet's own.
namespace SpreadsheetTable {

// The item list, its rows made when the table is read (body and data must outlive the table):
// a caption row with the body template's columns left to right (a pair column
// of option or note lines gives two, code and description, captioned as the body splits it),
// one row per record in specification order, the option and note lines under their record
// (under a subtotal only when the job shows subtotal options), and the totals block.
SheetTable items(const TemplateLayout &body, const ReportData &data);

// The order header (the cover's order fields with their labels) and the additional charges.
SheetTable order(const ReportData &data);

} // namespace SpreadsheetTable

} // namespace tavrel
