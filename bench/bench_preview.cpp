// How soon the preview can show a page of a big job: the report laid out by a LayoutJob on its
// own thread, as the preview window runs it, publishing pages to the preview's document. The job
// is read and the report set up as the preview and the command line do, so the pages are theirs.
//
//   bench_preview JOB.ini TEMPLATE.cst [PAGE]     (PAGE default 5000)
//
// JOB.ini names the SIF file (render_e2e.py writes one for the harness's gen_items.py files),
// TEMPLATE.cst comes from `bench_body --write-template`. Prints, from the start of the layout,
// when page 1 and page PAGE reached the preview's document, how long drawing each at screen
// resolution took (what the preview does to show it), and when the layout ended. Prints figures;
// never fails on them.

#include "base/ScriptedPrompter.h"
#include "render/LayoutJob.h"
#include "render/PageEngine.h"
#include "render/PageReplay.h"
#include "shell/AppContext.h"
#include "shell/ReportJob.h"
#include "shell/SettingsStore.h"
#include "shell/Startup.h"
#include "templates/ReportSelection.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <cstdio>

using namespace tavrel;

namespace {

double ms(qint64 nanoseconds) {
    return double(nanoseconds) / 1e6;
}

// Draws a page as the preview does at 100 %: 96 dots per inch. Returns milliseconds.
double drawPage(const PageEngine &engine, int number) {
    QElapsedTimer timer;
    timer.start();
    const Page &page = engine.page(number);
    constexpr double Scale = 96.0 / 1440.0;
    QImage image(int(page.width * Scale), int(page.height * Scale), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(Scale, Scale);
    paintPage(painter, engine, number);
    painter.end();
    return ms(timer.nsecsElapsed());
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 3) {
        // run.sh starts every benchmark bare; render_e2e.py runs this one with its files.
        std::printf("usage: bench_preview JOB.ini TEMPLATE.cst [PAGE] (run by render_e2e.py)\n");
        return 0;
    }
    const int farPage = args.size() > 3 ? args.at(3).toInt() : 5000;

    ScriptedPrompter prompter;
    AppContext context;
    if (!Startup::loadJob(context, args.at(1), QString(), prompter, PrinterList{})) {
        std::fprintf(stderr, "cannot read the job %s\n", qPrintable(args.at(1)));
        return 1;
    }
    ReportSelection selection; // the body alone, as render_e2e.py runs the command line
    selection.templates[1] = args.at(2);
    selection.printable[1] = ReportSelection::flag(true);
    ReportJob report(context, selection, prompter);

    PageEngine preview; // the preview window's document
    LayoutJob job([&report](PageEngine &engine, const CancelToken &cancel) {
        report.layOut(engine, &cancel);
    });
    job.setTarget(&preview);

    QElapsedTimer clock;
    double firstShown = -1;
    double farShown = -1;
    double firstDraw = 0;
    double farDraw = 0;
    job.setProgressCallback([&](int) {
        if (firstShown < 0 && preview.pages().size() >= 1) {
            firstDraw = drawPage(preview, 1);
            firstShown = ms(clock.nsecsElapsed());
        }
        if (farShown < 0 && int(preview.pages().size()) >= farPage) {
            farDraw = drawPage(preview, farPage);
            farShown = ms(clock.nsecsElapsed());
        }
    });
    clock.start();
    job.start();
    job.waitForFinished();
    const double done = ms(clock.nsecsElapsed());
    if (job.error()) {
        std::printf("layout failed: error %d\n", job.error()->number());
        return 0;
    }
    std::printf("items %d, pages %d\n", context.spec.itemCount(), int(preview.pages().size()));
    std::printf("page 1 on screen after %.0f ms (drawing it %.1f ms)\n", firstShown, firstDraw);
    if (farShown >= 0)
        std::printf("page %d on screen after %.0f ms (drawing it %.1f ms)\n", farPage, farShown,
                    farDraw);
    else
        std::printf("page %d: the document has fewer pages\n", farPage);
    // Once laid out, scrolling to a page is drawing it.
    if (int(preview.pages().size()) >= farPage)
        std::printf("page %d drawn again after the layout: %.1f ms\n", farPage,
                    drawPage(preview, farPage));
    std::printf("layout finished after %.0f ms\n", done);
    return 0;
}
