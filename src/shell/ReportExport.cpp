#include "shell/ReportExport.h"

#include "base/Prompter.h"
#include "render/ExportFiles.h"
#include "render/ExportMarkupWriter.h"
#include "render/PageEngine.h"
#include "render/SpreadsheetExport.h"
#include "shell/AppContext.h"
#include "shell/ReportJob.h"
#include "templates/TemplateReader.h"

#include <QDir>

namespace tavrel {

namespace {

bool wanted(const ReportSelection &selection, std::size_t row) {
    return selection.isPrintable(row) && !selection.templates[row].isEmpty();
}

// The template's file name less its last four characters (".cst" and the like).
QString templateName(const QString &path) {
    QString name = PathRules::lastComponent(path);
    name.chop(4);
    return name;
}

QString exportFolder(const QString &directory, const QString &fallback) {
    // Absolute, so that the files the pages link to (status icons) are named from any folder
    // the browser opens the pages from, not from the working folder of the export.
    const QString folder =
        QDir::cleanPath(QDir().absoluteFilePath(directory.isEmpty() ? fallback : directory));
    // The settings' folders are made at start-up; a folder named for this export may be new.
    QDir().mkpath(folder);
    return folder;
}

QDateTime reportTimeOf(const ExportOptions &options) {
    return options.reportTime.isValid() ? options.reportTime : QDateTime::currentDateTime();
}

struct ExportRun {
    QString path; // the single export file; HTML names later pages after it
    int pages = 0;
};

// Lays the selection out once with the export fragments switched on; the engine writes the
// files as the job ends.
ExportRun runExport(const AppContext &context, const ReportSelection &selection, Prompter &prompter,
                    const QString &folder, bool html, const ExportOptions &options) {
    ReportJob report(context, selection, prompter, reportTimeOf(options));
    JobState &job = report.job();
    job.htmlExport = html;
    job.rtfExport = !html;
    job.exportDirectory =
        exportFolder(folder, html ? context.paths.htmlFolder : context.paths.rtfFolder);
    job.exportBaseName = ReportExport::baseName(context, selection);

    PageEngine engine;
    const ExportMarkupWriter fragments;
    if (options.layOut) {
        if (!options.layOut(report, engine, &fragments))
            return {};
    } else {
        report.run(engine, {}, &fragments);
    }
    return {job.exportDirectory + QLatin1Char('/') + job.exportBaseName +
                (html ? QStringLiteral(".htm") : QStringLiteral(".rtf")),
            engine.PageCount()};
}

} // namespace

namespace ReportExport {

QString baseName(const AppContext &context, const ReportSelection &selection) {
    static constexpr const char *Suffixes[3] = {"Cov", "Cst", "Sum"};
    int printed = 0;
    std::size_t only = 0;
    for (std::size_t row = 0; row < 3; ++row) {
        if (wanted(selection, row)) {
            ++printed;
            only = row;
        }
    }
    if (printed == 1)
        return templateName(selection.templates[only]) + QLatin1String(Suffixes[only]);
    // A report of several sections belongs to the document it was printed from.
    if (!context.paths.activeDocumentName.isEmpty())
        return context.paths.activeDocumentName;
    return QStringLiteral("Report");
}

QString exportHtml(const AppContext &context, const ReportSelection &selection, Prompter &prompter,
                   const QString &directory, const ExportOptions &options) {
    const ExportRun run = runExport(context, selection, prompter, directory, true, options);
    if (run.path.isEmpty())
        return {};
    const QString first = ExportFiles::firstHtmlPage(run.path, run.pages);
    if (options.openWhenDone) {
        // The descriptions are spelled as the shell has always been given them.
        const bool bodyOnly =
            !wanted(selection, 0) && wanted(selection, 1) && !wanted(selection, 2);
        QString description;
        if (bodyOnly)
            description = QStringLiteral("Cst.html page");
        else if (run.pages > 1)
            description = QStringLiteral("preview paghe layout html");
        else
            description = QStringLiteral("preveiw page layout html");
        const bool opened = prompter.openDocument(first, description);
        if (options.openResult)
            options.openResult(opened);
    }
    return first;
}

QString exportRtf(const AppContext &context, const ReportSelection &selection, Prompter &prompter,
                  const QString &directory, const ExportOptions &options) {
    if (selection.templates[1].isEmpty())
        return {};
    // RTF export is always the body pages alone.
    const ExportRun run =
        runExport(context, sectionOnlySelection(TemplateKind::Custom, selection.templates[1]),
                  prompter, directory, false, options);
    if (run.path.isEmpty())
        return {};
    if (options.openWhenDone) {
        const bool opened = prompter.openDocument(run.path, QStringLiteral("Cst.rtf page"));
        if (options.openResult)
            options.openResult(opened);
    }
    return run.path;
}

QString spreadsheetFileName(const ReportSelection &selection, SpreadsheetFormat format) {
    const QString name = selection.templates[1].isEmpty()
                             ? QStringLiteral("Report")
                             : templateName(selection.templates[1]) + QLatin1String("Cst");
    return name +
           (format == SpreadsheetFormat::Xlsx ? QLatin1String(".xlsx") : QLatin1String(".csv"));
}

QString exportSpreadsheet(const AppContext &context, const ReportSelection &selection,
                          Prompter &prompter, const QString &path, SpreadsheetFormat format,
                          const ExportOptions &options) {
    if (selection.templates[1].isEmpty())
        return {};
    // The inputs the body renderer reads (an empty selection reads no template), and the body
    // template read once, as a job reads it.
    const ReportJob report(context, ReportSelection{}, prompter, reportTimeOf(options));
    const TemplateLayout body = TemplateReader::load(selection.templates[1], prompter);
    const SheetTable items = SpreadsheetTable::items(body, report.data());
    if (format == SpreadsheetFormat::Csv) {
        SpreadsheetExport::writeCsv(path, items);
    } else {
        SpreadsheetProperties properties;
        properties.title = context.paths.activeDocumentName.isEmpty()
                               ? templateName(selection.templates[1])
                               : context.paths.activeDocumentName;
        properties.author = report.data().companyName;
        properties.subject = QStringLiteral("Specification");
        SpreadsheetExport::writeXlsx(path, {items, SpreadsheetTable::order(report.data())},
                                     properties);
    }
    if (options.openWhenDone)
        prompter.openDocument(path, spreadsheetDescription(path));
    return path;
}

QString spreadsheetDescription(const QString &path) {
    return path.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive)
               ? QStringLiteral("Cst.csv spreadsheet")
               : QStringLiteral("Cst.xlsx spreadsheet");
}

QString saveSpreadsheet(const AppContext &context, const ReportSelection &selection,
                        Prompter &prompter, const ExportOptions &options) {
    if (selection.templates[1].isEmpty())
        return {};
    FileDialogRequest request;
    request.title = QStringLiteral("Save the item list as a spreadsheet");
    request.filter =
        QStringLiteral("Excel workbook (*.xlsx)|*.xlsx|CSV (*.csv)|*.csv|All Files  (*.*)|*.*");
    request.defaultExtension = QStringLiteral("xlsx");
    request.folder = context.paths.pdfFolder;
    request.fileName = spreadsheetFileName(selection, SpreadsheetFormat::Xlsx);
    const std::optional<QString> path = prompter.saveFile(request);
    if (!path || path->isEmpty())
        return {};
    const SpreadsheetFormat format = path->endsWith(QLatin1String(".csv"), Qt::CaseInsensitive)
                                         ? SpreadsheetFormat::Csv
                                         : SpreadsheetFormat::Xlsx;
    return exportSpreadsheet(context, selection, prompter, *path, format, options);
}

} // namespace ReportExport

} // namespace tavrel
