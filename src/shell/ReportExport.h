#pragma once

#include "shell/MenuChecks.h"

#include <QDateTime>
#include <QString>

#include <functional>

namespace tavrel {

class ExportFragmentWriter;
class PageEngine;
class Prompter;
class ReportJob;
struct AppContext;

struct ExportOptions {
    // Hand the finished file to the desktop (Prompter::openDocument).
    bool openWhenDone = true;
    // Hears whether the desktop could open the finished file (when openWhenDone).
    std::function<void(bool opened)> openResult;
    // The "Report Date"/"Report Time" of the run; invalid means now.
    QDateTime reportTime;
    // Lays the export job out in place of report.run (a window runs it off its thread with
    // progress); false means the user cancelled: no file is opened and "" is returned.
    std::function<bool(ReportJob &report, PageEngine &engine,
                       const ExportFragmentWriter *fragments)>
        layOut;
};

// Re-runs a report job with HTML or RTF export switched on, as the preview window's HTML and RTF
// commands and the command-line tool do. Both throw RuntimeError when a file cannot be written.
namespace ReportExport {

// The base name of the export files of a selection: a job of the body alone, the cover alone or
// the summary alone is named after its template (file name less its four-character extension)
// plus "Cst", "Cov" or "Sum"; any other job after the active document (or "Report" without one).
QString baseName(const AppContext &context, const ReportSelection &selection);

// Writes the selection as HTML pages into directory (the settings' HTML folder when empty) and
// returns the page file to open first: base + ".htm" for one page, base + "1.htm" for more.
QString exportHtml(const AppContext &context, const ReportSelection &selection, Prompter &prompter,
                   const QString &directory, const ExportOptions &options = {});

// Writes the body-only job of the selection's body template as one RTF document, template name
// + "Cst.rtf", into directory (the settings' RTF folder when empty) and returns its path; returns
// "" and writes nothing when the selection names no body template.
QString exportRtf(const AppContext &context, const ReportSelection &selection, Prompter &prompter,
                  const QString &directory, const ExportOptions &options = {});

// The spreadsheet exports of the item list.
enum class SpreadsheetFormat { Xlsx, Csv };

// The file name a spreadsheet export of the selection gets by default: the body template's
// name + "Cst" + ".xlsx" or ".csv".
QString spreadsheetFileName(const ReportSelection &selection, SpreadsheetFormat format);

// Writes the item list of the selection's body template as it prints on the body pages (see
// SpreadsheetTable) to path: an .xlsx workbook with the items and, on a second sheet, the order
// header and additional charges; or the items alone as CSV. Returns path, or "" and writes
// nothing when the selection names no body template. Throws RuntimeError when the template
// cannot be read or the file cannot be written; an existing file is replaced only by a
// complete new one.
QString exportSpreadsheet(const AppContext &context, const ReportSelection &selection,
                          Prompter &prompter, const QString &path, SpreadsheetFormat format,
                          const ExportOptions &options = {});

// Asks where to save the item list (a save dialog in the PDF folder; a name ending in ".csv"
// writes CSV, any other an .xlsx workbook) and exports it there. Returns the path written, or ""
// when the user cancelled or the selection names no body template. Throws as exportSpreadsheet.
// How the desktop is told what a written spreadsheet is (Prompter::openDocument), from its name.
QString spreadsheetDescription(const QString &path);
QString saveSpreadsheet(const AppContext &context, const ReportSelection &selection,
                        Prompter &prompter, const ExportOptions &options = {});

} // namespace ReportExport

} // namespace tavrel
