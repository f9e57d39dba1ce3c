// Body pages to PDF against the Qt floor of the shared benchmark harness.
//
//   bench_body --floor QTFLOOR --data DIR [--sizes 1000,10000,50000,100000] [--reps N]
//              [--out DIR] [--write-template FILE.cst]
//   bench_body --one ITEMS.sif OUT.pdf          (one measured run; used by the above)
//
// DIR holds items_N.sif from the harness's gen_items.py. For every size and repetition the
// floor and Tavrel run as child processes on the same file, one after the other; the figures
// are wall time and the child's peak resident memory. Tavrel lays the items out with a custom
// template that mirrors the harness's report: Letter portrait, half-inch margins, a bold 14 pt
// title with the date on the right, a caption row with a rule, eight columns in 8 pt Liberation
// Sans (80/150/40/35/55/60/55/65 pt), option lines with the code indented 8 pt in column 1 and
// the description over columns 2-3, "Page n of  m" centred in the footer, and the list and
// sell totals after the last row. Prints figures; never fails on them.

#include "base/ScriptedPrompter.h"
#include "common/PlacedBox.h"
#include "render/BodyRenderer.h"
#include "render/OutputHelpers.h"
#include "render/PageEngine.h"
#include "render/PdfOutput.h"
#include "render/PrintJob.h"
#include "render/ReportData.h"
#include "spec/FieldCatalog.h"
#include "spec/FieldLengths.h"
#include "spec/SifReader.h"
#include "spec/SpecData.h"
#include "templates/TemplateWriter.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QGuiApplication>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace tavrel;

namespace {

constexpr qint32 Pt = 20; // twips per point

BoxInfo &place(TemplateLayout &layout, const QString &caption, const QString &container,
               QRect geometry, qint16 size = 8, bool bold = false, qint32 align = TextAlign::Left) {
    BoxInfo &box = placeBox(layout, caption, container, geometry, align);
    box.fontSize = size;
    box.fontBold = bold;
    box.backColor = WhiteColor;
    box.level = 1;
    return box;
}

TemplateLayout benchTemplate() {
    TemplateLayout layout;
    layout.other.logoSize = layout.other.imageSize = QStringLiteral("100%");
    // Header: title at 36-54 pt, the date right-aligned beside it.
    BoxInfo &title = place(layout, QStringLiteral("Title"), Container::header(),
                           {0, 0, 360 * Pt, 18 * Pt}, 14, true);
    title.notes = true;
    title.notesName = QStringLiteral("Furniture Specification Report");
    title.nameIndex = FieldCatalog::NoNameIndex;
    place(layout, QStringLiteral("Report Date"), Container::header(),
          {360 * Pt, 4 * Pt, 180 * Pt, 12 * Pt}, 8, false, TextAlign::Right);
    // Columns; the caption row sits 4 pt below the header band as in the harness.
    const struct {
        const char *caption;
        qint32 width;
        bool right;
    } columns[] = {{"Part Number", 80, false}, {"Part Description", 150, false},
                   {"Mfg", 40, false},         {"Qty", 35, true},
                   {"List$", 55, true},        {"EXT List$", 60, true},
                   {"Cust$", 55, true},        {"EXT Cust$", 65, true}};
    qint32 left = 0;
    for (const auto &column : columns) {
        place(layout, QLatin1String(column.caption), Container::mainPort(),
              {left, 4 * Pt, column.width * Pt, 12 * Pt}, 8, false,
              column.right ? TextAlign::Right : TextAlign::Left);
        left += column.width * Pt;
    }
    // Option lines: code indented 8 pt in column 1, description over columns 2-3.
    place(layout, QStringLiteral("Option Code / Description"), Container::mainPort(),
          {8 * Pt, 17 * Pt, 262 * Pt, 10 * Pt});
    layout.other.realONNWidth = 72 * Pt;
    layout.other.realODWidth = 190 * Pt;
    // Totals in columns 5-6 and 7-8.
    BoxInfo &list = place(layout, QStringLiteral("Total List$"), Container::mainPort(),
                          {305 * Pt, 40 * Pt, 115 * Pt, 12 * Pt}, 8, true, TextAlign::Right);
    list.body = false;
    list.total = true;
    BoxInfo &sell = place(layout, QStringLiteral("Total Cust$"), Container::mainPort(),
                          {420 * Pt, 40 * Pt, 120 * Pt, 12 * Pt}, 8, true, TextAlign::Right);
    sell.body = false;
    sell.total = true;
    // Footer: "Page n of  m" centred.
    place(layout, QStringLiteral("Page n of  m"), Container::footer(), {0, 0, 540 * Pt, 12 * Pt}, 8,
          false, TextAlign::Center);
    return layout;
}

double seconds(const QElapsedTimer &timer) {
    return double(timer.nsecsElapsed()) / 1e9;
}

// One measured run: SIF in, PDF out. Prints "pages load layout pdf" on standard output.
int runOne(const QString &sif, const QString &pdf) {
    QElapsedTimer timer;
    timer.start();
    SpecData spec;
    readSif(sif, QFileInfo(sif).fileName(), spec);
    // The harness's totals are the sums of the extended values.
    for (int i = 1; i <= spec.itemCount(); ++i) {
        spec.header.totalList += spec.item(i).extendedList;
        spec.header.totalSell += spec.item(i).extendedSell;
    }
    const double load = seconds(timer);

    timer.restart();
    const FieldLengths lengths = FieldLengths::builtIn();
    ReportData data;
    data.spec = &spec;
    data.fieldLengths = &lengths;
    data.showLabel = false;
    data.reportTime = QDateTime(QDate(2025, 1, 15), QTime(0, 0));
    BodyRenderer renderer(benchTemplate(), data);
    PageEngine engine;
    JobState job;
    job.bodyPrintable = true;
    PrintSettings settings;
    settings.marginLeft = settings.marginRight = settings.marginTop = settings.marginBottom = 720;
    OutputHelpers out(engine, job);
    PrintDocument(out, job, settings, {nullptr, &renderer, nullptr});
    const double layout = seconds(timer);

    timer.restart();
    writePdf(engine, pdf);
    const double write = seconds(timer);
    std::printf("%d %.3f %.3f %.3f\n", engine.PageCount(), load, layout, write);
    return 0;
}

struct ChildResult {
    double wall = 0;
    double peakMb = 0;
    QByteArray output;
    bool ok = false;
};

// Runs a program, returns its wall time, peak resident memory and standard output.
ChildResult runChild(const QStringList &arguments) {
    ChildResult result;
    int pipeFds[2];
    if (pipe(pipeFds) != 0)
        return result;
    std::vector<QByteArray> args;
    for (const QString &a : arguments)
        args.push_back(a.toLocal8Bit());
    std::vector<char *> argv;
    for (QByteArray &a : args)
        argv.push_back(a.data());
    argv.push_back(nullptr);
    std::fflush(stdout); // or the child would inherit what is still buffered
    QElapsedTimer timer;
    timer.start();
    const pid_t pid = fork();
    if (pid == 0) {
        dup2(pipeFds[1], STDOUT_FILENO);
        close(pipeFds[0]);
        close(pipeFds[1]);
        execv(argv[0], argv.data());
        _exit(127);
    }
    close(pipeFds[1]);
    char buffer[4096];
    ssize_t n = 0;
    while ((n = read(pipeFds[0], buffer, sizeof buffer)) > 0)
        result.output.append(buffer, qsizetype(n));
    close(pipeFds[0]);
    int status = 0;
    rusage usage{};
    wait4(pid, &status, 0, &usage);
    result.wall = seconds(timer);
    result.peakMb = double(usage.ru_maxrss) / 1024.0;
    result.ok = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return result;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() == 4 && args.at(1) == QLatin1String("--one"))
        return runOne(args.at(2), args.at(3));

    QString floor;
    QString dataDir;
    QString outDir = QDir::tempPath() + QStringLiteral("/bench_body_out");
    QList<int> sizes = {1000, 10000, 50000, 100000};
    int reps = 1;
    for (qsizetype i = 1; i + 1 < args.size(); i += 2) {
        const QString &key = args.at(i);
        const QString &value = args.at(i + 1);
        if (key == QLatin1String("--floor"))
            floor = value;
        else if (key == QLatin1String("--data"))
            dataDir = value;
        else if (key == QLatin1String("--out"))
            outDir = value;
        else if (key == QLatin1String("--reps"))
            reps = std::max(1, value.toInt());
        else if (key == QLatin1String("--sizes")) {
            sizes.clear();
            for (const QString &size : value.split(QLatin1Char(',')))
                sizes << size.toInt();
        } else if (key == QLatin1String("--write-template")) {
            TemplateWriter::write(value, benchTemplate(),
                                  TemplateWriter::titleLine(TemplateKind::Custom, {}));
            return 0;
        }
    }
    if (floor.isEmpty() || dataDir.isEmpty()) {
        std::fprintf(stderr, "usage: bench_body --floor QTFLOOR --data DIR [--sizes N,...] "
                             "[--reps N] [--out DIR] | --one ITEMS.sif OUT.pdf\n");
        return 2;
    }
    QDir().mkpath(outDir);
    const QString self = QCoreApplication::applicationFilePath();
    std::printf("%8s  %-8s %8s %8s %7s %9s %8s %8s\n", "items", "who", "wall s", "pages", "pages/s",
                "peak MB", "x time", "x mem");
    for (int size : sizes) {
        const QString sif = QStringLiteral("%1/items_%2.sif").arg(dataDir).arg(size);
        std::vector<double> floorWall, floorMem, ourWall, ourMem, ratios;
        int floorPages = 0;
        int ourPages = 0;
        QByteArray ourSplit;
        for (int rep = 0; rep < reps; ++rep) {
            const ChildResult f =
                runChild({floor, sif, QStringLiteral("%1/floor_%2.pdf").arg(outDir).arg(size)});
            const ChildResult t =
                runChild({self, QStringLiteral("--one"), sif,
                          QStringLiteral("%1/tavrel_%2.pdf").arg(outDir).arg(size)});
            if (!f.ok || !t.ok) {
                std::fprintf(stderr, "run failed at %d items\n", size);
                return 1;
            }
            floorWall.push_back(f.wall);
            floorMem.push_back(f.peakMb);
            ourWall.push_back(t.wall);
            ourMem.push_back(t.peakMb);
            ratios.push_back(t.wall / f.wall);
            ourPages = t.output.split(' ').value(0).toInt();
            ourSplit = t.output.trimmed();
        }
        // The floor prints its page count on standard error; count the PDF's pages instead.
        QFile pdf(QStringLiteral("%1/floor_%2.pdf").arg(outDir).arg(size));
        if (pdf.open(QIODevice::ReadOnly))
            floorPages = int(pdf.readAll().count("/Type /Page\n")); // one per page object
        const double fw = median(floorWall);
        const double tw = median(ourWall);
        std::printf("%8d  %-8s %8.2f %8d %7.0f %9.0f %8s %8s\n", size, "qtfloor", fw, floorPages,
                    floorPages / fw, median(floorMem), "1.00", "1.00");
        std::printf("%8d  %-8s %8.2f %8d %7.0f %9.0f %8.2f %8.2f   (pages load layout pdf: %s)\n",
                    size, "tavrel", tw, ourPages, ourPages / tw, median(ourMem), median(ratios),
                    median(ourMem) / median(floorMem), ourSplit.constData());
        std::fflush(stdout);
    }
    return 0;
}
