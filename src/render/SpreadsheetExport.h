#pragma once

#include "render/SpreadsheetTable.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace tavrel {

// The document properties of a workbook.
struct SpreadsheetProperties {
    QString title;
    QString author; // the job's company name
    QString subject;
};

// Writes the sheets of SpreadsheetTable as an Excel workbook or as CSV. Both are written beside
// the target and renamed over it once complete, and throw RuntimeError when the file cannot be
// written. Text is always written as text: a cell starting with "=", "+", "-" or "@" never
// becomes a formula.
namespace SpreadsheetExport {

// The spreadsheet number format of a cell: the body's BASIC pattern reads the same in Excel and
// LibreOffice ("0" and "#" digits, "," grouping, "%" multiplying); a number without a pattern is
// "General"; a signed percentage shows "+" in front of a positive value.
QString numberFormat(const SheetCell &cell);

// One sheet per table, in order; the first row of a table with a caption row stays in view.
void writeXlsx(const QString &path, const std::vector<SheetTable> &sheets,
               const SpreadsheetProperties &properties);

// The text of one table as CSV (RFC 4180): UTF-8 with a byte-order mark, fields separated by
// commas, records ended by CR LF, a field quoted when it holds a comma, a quote or a line break.
// A number is written as a plain decimal with the body's decimal places (no currency sign, no
// grouping, percentages as the percent figure), so that it reads back as a number. A text that
// starts with "=", "+", "-", "@", a tab or a carriage return gets a leading "'" and quotes, so
// that no spreadsheet takes it for a formula.
QByteArray csvText(const SheetTable &table);
void writeCsv(const QString &path, const SheetTable &table);

} // namespace SpreadsheetExport

} // namespace tavrel
