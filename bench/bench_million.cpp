// A million items through the whole body pipeline: a generated SIF read by the SIF reader, laid
// out by the body renderer with the default "Classic Customer.cst" template, written as PDF.
//
//   bench_million [ITEMS] [OUT.pdf]      (default 1000000 items, PDF in the temp folder)
//
// Prints the time of each step and the process's peak resident memory; never fails on them.

#include "base/RuntimeError.h"
#include "base/ScriptedPrompter.h"
#include "render/BodyRenderer.h"
#include "render/OutputHelpers.h"
#include "render/PageEngine.h"
#include "render/PdfOutput.h"
#include "render/PrintJob.h"
#include "render/ReportData.h"
#include "spec/FieldLengths.h"
#include "spec/SifReader.h"
#include "spec/SpecData.h"
#include "templates/TemplateReader.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>

#include <sys/resource.h>

#include <cstdio>

using namespace tavrel;

namespace {

double peakMegabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024.0;
}

double seconds(QElapsedTimer &timer) {
    const double elapsed = double(timer.nsecsElapsed()) / 1e9;
    timer.restart();
    return elapsed;
}

// Items with the usual tags and two options each, as the parent application writes them.
QByteArray generatedSif(int count) {
    QByteArray sif = "SF=bench.sp4\r\nST=Million\r\nDT=01/15/2025\r\nTM=10:00\r\n";
    sif.reserve(qsizetype(count) * 150);
    for (int i = 1; i <= count; ++i) {
        const QByteArray n = QByteArray::number(i);
        sif += "PN=PART-" + n + "\r\nPD=Work surface " + n +
               "\r\nMC=ACM\r\nQT=" + QByteArray::number(i % 9 + 1) +
               "\r\nPL=" + QByteArray::number(i % 997) +
               ".50\r\nSP=" + QByteArray::number(i % 613) + ".25\r\nT1=Floor " +
               QByteArray::number(i % 12) + "\r\nON=F" + n + "\r\nOD=Finish\r\n";
    }
    return sif;
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QStringList args = app.arguments();
    const int count = args.size() > 1 ? args.at(1).toInt() : 1000000;
    const QString pdf =
        args.size() > 2 ? args.at(2) : QDir::tempPath() + QStringLiteral("/bench_million.pdf");
    const QString sifPath = QDir::tempPath() + QStringLiteral("/bench_million.sif");

    QElapsedTimer timer;
    timer.start();
    {
        QFile file(sifPath);
        if (!file.open(QIODevice::WriteOnly) || file.write(generatedSif(count)) < 0) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(sifPath));
            return 1;
        }
    }
    const double generate = seconds(timer);
    const double sifMb = double(QFile(sifPath).size()) / (1024.0 * 1024.0);

    SpecData spec;
    readSif(sifPath, QStringLiteral("bench.sp4"), spec);
    const double read = seconds(timer);
    const double afterRead = peakMegabytes();

    ScriptedPrompter prompter;
    const QString templatePath = QCoreApplication::applicationDirPath() +
                                 QStringLiteral("/Print Templates/Classic Customer.cst");
    const TemplateLayout layout = TemplateReader::load(templatePath, prompter);
    if (layout.placedBoxCount() == 0) {
        // Without it every row would be skipped and the figures would mean nothing.
        std::fprintf(stderr, "no body template at %s\n", qPrintable(templatePath));
        return 1;
    }
    const FieldLengths lengths = FieldLengths::builtIn();
    ReportData data;
    data.spec = &spec;
    data.fieldLengths = &lengths;
    data.reportTime = QDateTime(QDate(2025, 1, 15), QTime(10, 0));
    BodyRenderer renderer(layout, data);
    PageEngine engine;
    JobState job;
    job.bodyPrintable = true;
    PrintSettings settings;
    settings.marginLeft = settings.marginRight = settings.marginTop = settings.marginBottom = 500;
    OutputHelpers out(engine, job);
    try {
        PrintDocument(out, job, settings, {nullptr, &renderer, nullptr});
    } catch (const RuntimeError &error) {
        // Reported like the program would, with how far the layout got.
        std::printf("layout stopped after %d pages (%.2f s): error %d: %s\n", engine.PageCount(),
                    seconds(timer), error.number(), qPrintable(error.description()));
        return 1;
    }
    const double lay = seconds(timer);

    writePdf(engine, pdf);
    const double write = seconds(timer);
    const double pdfMb = double(QFile(pdf).size()) / (1024.0 * 1024.0);

    std::printf("items %d, SIF %.1f MB, %d pages, PDF %.1f MB\n", spec.itemCount(), sifMb,
                engine.PageCount(), pdfMb);
    std::printf("generate %.2f s, read %.2f s, lay out %.2f s, PDF %.2f s, total %.2f s "
                "(without generating)\n",
                generate, read, lay, write, read + lay + write);
    std::printf("peak memory after reading %.0f MB, at the end %.0f MB\n", afterRead,
                peakMegabytes());
    QFile::remove(sifPath);
    return 0;
}
