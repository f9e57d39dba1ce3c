#include "cli/Commands.h"

#include "base/ConsolePrompter.h"
#include "base/RuntimeError.h"
#include "cli/CupsPrinting.h"
#include "render/DisplayListJson.h"
#include "render/ImageOutput.h"
#include "render/PageEngine.h"
#include "render/PdfOutput.h"
#include "shell/ReportExport.h"
#include "shell/ReportJob.h"
#include "shell/Startup.h"
#include "templates/PrintSelection.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

namespace tavrel::cli {

namespace {

QString usageText() {
    return QStringLiteral(
        "Usage: tavrel-cli render JOBFILE [--cover T|none] [--body T|none] [--summary T|none]\n"
        "                         [--pdf FILE] [--png DIR [--dpi N]] [--dump FILE.json] "
        "[--print]\n"
        "                         [--html [DIR]] [--rtf [DIR]] [--xlsx FILE] [--csv FILE]\n"
        "                         [--no-open]\n\n"
        "Loads the job as start-up does (no window), runs the print job over the print\n"
        "selection of the job file (section \"Printer\": \"Cover Template\", \"Cover "
        "Printable\", ...)\n"
        "and writes what is asked for:\n"
        "  --cover/--body/--summary T   print that section from template T; 'none' leaves it "
        "out\n"
        "  --pdf FILE                   the document as PDF\n"
        "  --png DIR                    every page as DIR/page-001.png, ... (--dpi, default "
        "96)\n"
        "  --dump FILE.json             the display list as JSON\n"
        "  --print                      print on the job's printer (PrinterDeviceName, "
        "PrintCopies)\n"
        "  --html [DIR]                 the job as HTML pages in DIR (default: the HTML folder "
        "of\n"
        "                               the settings); one page is BASE.htm, more are "
        "BASE1.htm, ...\n"
        "  --rtf [DIR]                  the body pages alone as one RTF file in DIR (default: "
        "the\n"
        "                               RTF folder of the settings), TEMPLATECst.rtf\n"
        "  --xlsx FILE                  the item list of the body template as a spreadsheet: "
        "items,\n"
        "                               option lines, subtotals and totals; the order header "
        "and\n"
        "                               additional charges on a second sheet\n"
        "  --csv FILE                   the same item list as CSV (UTF-8)\n"
        "  --no-open                    do not hand the exported file to the desktop\n"
        "Progress goes to standard error.\n");
}

struct RenderOptions {
    QString jobFile;
    std::array<std::optional<QString>, 3> sections; // cover, body, summary: a path or "none"
    QString pdf;
    QString pngFolder;
    double dpi = 96;
    QString dump;
    bool print = false;
    std::optional<QString> html; // the export folder; "" for the settings' folder
    std::optional<QString> rtf;
    QString xlsx;
    QString csv;
    bool open = true;

    bool wantsLayout() const {
        return !pdf.isEmpty() || !pngFolder.isEmpty() || !dump.isEmpty() || print ||
               (!html && !rtf && xlsx.isEmpty() && csv.isEmpty());
    }
};

// The folder after --html or --rtf is optional. A following argument is taken as the folder
// unless it is an option, or it is the only plain argument left while the job file is missing.
QString optionalFolder(const QStringList &args, qsizetype &i, bool haveJobFile) {
    const auto plain = [&](qsizetype at) {
        return at < args.size() && !args.at(at).startsWith(QLatin1String("--"));
    };
    if (!plain(i + 1))
        return {};
    if (!haveJobFile && !plain(i + 2))
        return {};
    return args.at(++i);
}

// Returns an error message, empty when the arguments are fine.
QString parseOptions(const QStringList &args, RenderOptions &options) {
    const QStringList sectionOptions = {QStringLiteral("--cover"), QStringLiteral("--body"),
                                        QStringLiteral("--summary")};
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString &arg = args.at(i);
        const bool hasValue = i + 1 < args.size();
        const qsizetype section = sectionOptions.indexOf(arg);
        if (section >= 0 || arg == QLatin1String("--pdf") || arg == QLatin1String("--png") ||
            arg == QLatin1String("--dpi") || arg == QLatin1String("--dump") ||
            arg == QLatin1String("--xlsx") || arg == QLatin1String("--csv")) {
            if (!hasValue)
                return QStringLiteral("%1 needs a value").arg(arg);
            const QString value = args.at(++i);
            if (section >= 0)
                options.sections[section] = value;
            else if (arg == QLatin1String("--pdf"))
                options.pdf = value;
            else if (arg == QLatin1String("--png"))
                options.pngFolder = value;
            else if (arg == QLatin1String("--dump"))
                options.dump = value;
            else if (arg == QLatin1String("--xlsx"))
                options.xlsx = value;
            else if (arg == QLatin1String("--csv"))
                options.csv = value;
            else {
                bool ok = false;
                options.dpi = value.toDouble(&ok);
                if (!ok || options.dpi < 1 || options.dpi > 2400)
                    return QStringLiteral("--dpi wants a number from 1 to 2400");
            }
        } else if (arg == QLatin1String("--print")) {
            options.print = true;
        } else if (arg == QLatin1String("--html")) {
            options.html = optionalFolder(args, i, !options.jobFile.isEmpty());
        } else if (arg == QLatin1String("--rtf")) {
            options.rtf = optionalFolder(args, i, !options.jobFile.isEmpty());
        } else if (arg == QLatin1String("--no-open")) {
            options.open = false;
        } else if (arg.startsWith(QLatin1String("--")) || !options.jobFile.isEmpty()) {
            return QStringLiteral("unexpected argument '%1'").arg(arg);
        } else {
            options.jobFile = arg;
        }
    }
    if (options.jobFile.isEmpty())
        return QStringLiteral("no job file given");
    return {};
}

// The print selection of the job file (read without writing defaults back), with each section
// given on the command line taking its place: a template path prints, "none" leaves it out.
ReportSelection chooseSelection(const AppContext &context,
                                const std::array<std::optional<QString>, 3> &options) {
    ReportSelection selection = context.job.storedSelection(context.paths.templateFolder);
    for (std::size_t row = 0; row < ReportSelection::Rows; ++row) {
        const std::optional<QString> &option = options[row];
        if (!option) {
            QString &path = selection.templates[row];
            path = PathRules::resolveAgainst(context.paths.jobFile, path);
            path.replace(QLatin1Char('\\'), QLatin1Char('/'));
        } else if (*option == QLatin1String("none")) {
            selection.templates[row].clear();
            selection.printable[row] = ReportSelection::flag(false);
        } else {
            selection.templates[row] = *option;
            selection.printable[row] = ReportSelection::flag(true);
        }
    }
    return selection;
}

void writeOutputs(const PageEngine &engine, const RenderOptions &options,
                  const AppContext &context) {
    QElapsedTimer timer;
    if (!options.dump.isEmpty()) {
        QFile file(options.dump);
        if (!file.open(QIODevice::WriteOnly) || file.write(displayListJsonText(engine)) < 0)
            throw RuntimeError(ErrorNumber::PathFileAccessError,
                               QStringLiteral("Cannot write %1").arg(options.dump));
    }
    if (!options.pdf.isEmpty()) {
        timer.start();
        const int count = int(engine.pages().size());
        writePdf(engine, options.pdf, [count](int page) {
            if (page % 100 == 0 && page < count)
                printErr(QStringLiteral("PDF: page %1 of %2\n").arg(page).arg(count));
        });
        printErr(QStringLiteral("PDF: %1 (%2 s)\n")
                     .arg(options.pdf)
                     .arg(double(timer.elapsed()) / 1000.0, 0, 'f', 2));
    }
    if (!options.pngFolder.isEmpty()) {
        const QStringList written = writePngPages(engine, options.pngFolder, options.dpi);
        printErr(
            QStringLiteral("PNG: %1 pages in %2\n").arg(written.size()).arg(options.pngFolder));
    }
    if (options.print) {
        CupsPrinting::print(engine, context.printer.printerDeviceName, context.printer.printCopies);
        printErr(QStringLiteral("Printed on %1\n").arg(context.printer.printerDeviceName));
    }
}

void writeExports(const AppContext &context, const ReportSelection &selection,
                  const RenderOptions &options, Prompter &prompter) {
    ExportOptions exportOptions;
    exportOptions.openWhenDone = options.open;
    if (options.html) {
        const QString first =
            ReportExport::exportHtml(context, selection, prompter, *options.html, exportOptions);
        printErr(QStringLiteral("HTML: %1\n").arg(first));
    }
    if (options.rtf) {
        const QString written =
            ReportExport::exportRtf(context, selection, prompter, *options.rtf, exportOptions);
        if (written.isEmpty())
            printErr(QStringLiteral("RTF: no body template, nothing written\n"));
        else
            printErr(QStringLiteral("RTF: %1\n").arg(written));
    }
    const std::pair<const QString &, ReportExport::SpreadsheetFormat> sheets[] = {
        {options.xlsx, ReportExport::SpreadsheetFormat::Xlsx},
        {options.csv, ReportExport::SpreadsheetFormat::Csv},
    };
    for (const auto &[path, format] : sheets) {
        if (path.isEmpty())
            continue;
        const QString written = ReportExport::exportSpreadsheet(context, selection, prompter, path,
                                                                format, exportOptions);
        const QString kind = format == ReportExport::SpreadsheetFormat::Xlsx
                                 ? QStringLiteral("XLSX")
                                 : QStringLiteral("CSV");
        if (written.isEmpty())
            printErr(kind + QStringLiteral(": no body template, nothing written\n"));
        else
            printErr(kind + QStringLiteral(": %1\n").arg(written));
    }
}

// Ends the process once everything asked for is written and closed. A big job's document is
// millions of small blocks; handing them back one by one takes seconds and gains nothing when
// the process ends next. Under the sanitizers the ordinary return runs instead, so that their
// leak check sees a full teardown.
int finish(int status) {
#if defined(__SANITIZE_ADDRESS__)
    return status;
#else
    std::fflush(nullptr);
    std::_Exit(status);
#endif
}

} // namespace

int runRender(const QStringList &args) {
#if defined(__GLIBC__)
    // Laying out and writing a big job frees and takes back the same few megabytes for every
    // page; by default the C library hands them to the system each time and faults them in
    // again. This process lives for one job, so it keeps what it has.
    mallopt(M_TRIM_THRESHOLD, 512 * 1024 * 1024);
    mallopt(M_MMAP_THRESHOLD, 64 * 1024 * 1024);
    mallopt(M_TOP_PAD, 16 * 1024 * 1024);
#endif
    if (wantsHelp(args)) {
        printOut(usageText());
        return 0;
    }
    RenderOptions options;
    const QString problem = parseOptions(args, options);
    if (!problem.isEmpty()) {
        printErr(QStringLiteral("tavrel-cli render: %1\n\n").arg(problem) + usageText());
        return 2;
    }

    ConsolePrompter prompter;
    AppContext context;
    if (!Startup::loadJob(context, options.jobFile, defaultTemplateRoot(), prompter,
                          CupsPrinting::printers()))
        return 1;

    const ReportSelection selection = chooseSelection(context, options.sections);
    // The check a direct print run makes: what it refuses is not laid out here either, with the
    // same text and the same exit status as check-print.
    const QString refusal = PrintSelection::checkMessage(selection);
    if (!refusal.isEmpty()) {
        printErr(consoleText(refusal) + QLatin1Char('\n'));
        return 1;
    }
    ReportJob report(context, selection, prompter);

    PageEngine engine;
    engine.addNewPageListener([](int page) {
        if (page % 100 == 0)
            printErr(QStringLiteral("Laid out %1 pages\n").arg(page));
    });
    try {
        if (options.wantsLayout()) {
            QElapsedTimer timer;
            timer.start();
            report.run(engine, [] { QCoreApplication::processEvents(); });
            printErr(QStringLiteral("Laid out %1 pages (%2 s)\n")
                         .arg(engine.pages().size())
                         .arg(double(timer.elapsed()) / 1000.0, 0, 'f', 2));
            writeOutputs(engine, options, context);
        }
        writeExports(context, selection, options, prompter);
    } catch (const RuntimeError &error) {
        printErr(QStringLiteral("tavrel-cli render: error %1: %2\n")
                     .arg(error.number())
                     .arg(error.description()));
        return 1;
    }
    return finish(0);
}

} // namespace tavrel::cli
