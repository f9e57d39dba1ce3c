#include "render/LayoutJob.h"

#include "base/RuntimeError.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "render/CancelToken.h"
#include "render/PageEngine.h"
#include "render/PdfExportJob.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <atomic>

using namespace tavrel;

namespace {

// A page of text in a font of its own, so that published pages carry several fonts.
void drawPage(PageEngine &engine, int number) {
    engine.setFontName(number % 2 ? "Arial" : "Times New Roman");
    engine.setFontSize(8 + number % 5);
    engine.TextBox(QString("Page %1 text").arg(number), 1440, 1440, 6000, 0);
}

// Lays out pages until count is reached or the token is raised, checking it between pages as
// the print job does.
void layOutPages(PageEngine &engine, const CancelToken &cancel, int count,
                 std::atomic<int> *made = nullptr) {
    engine.StartDoc();
    for (int page = 1; page <= count; ++page) {
        if (page > 1) {
            if (cancel.isCancelled())
                break;
            engine.NewPage();
        }
        drawPage(engine, page);
        if (made)
            made->store(page);
    }
    engine.EndDoc();
}

QStringList textsOf(const PageEngine &engine, int page) {
    QStringList texts;
    for (const PageItem &item : engine.page(page).items) {
        if (const auto *text = std::get_if<TextItem>(&item))
            texts << text->text + "@" + engine.fonts().at(text->font).spec.name;
    }
    return texts;
}

} // namespace

// LayoutJob: pages laid out on a worker thread reach the window thread's engine as they are
// finished, progress is reported there, and the cancel token stops the work between pages.
class LayoutJobTest : public QObject {
    Q_OBJECT

private slots:
    void publishesEveryPageWithItsFonts_data();
    void publishesEveryPageWithItsFonts();
    void pagesDrawnOverAfterPublishingArriveToo();
    void cancelStopsBetweenPages();
    void errorOfTheWorkComesBack();
    void cancelledPdfLeavesNoFile_data();
    void cancelledPdfLeavesNoFile();
};

void LayoutJobTest::publishesEveryPageWithItsFonts_data() {
    QTest::addColumn<int>("pages");
    QTest::newRow("one page") << 1;
    QTest::newRow("forty pages") << 40;
}

void LayoutJobTest::publishesEveryPageWithItsFonts() {
    QFETCH(int, pages);
    PageEngine expected;
    const CancelToken never;
    layOutPages(expected, never, pages);

    PageEngine shown;
    QList<int> progress;
    Qt::HANDLE workerThread = nullptr;
    LayoutJob job([&](PageEngine &engine, const CancelToken &cancel) {
        workerThread = QThread::currentThreadId();
        layOutPages(engine, cancel, pages);
    });
    job.setTarget(&shown);
    job.setProgressCallback([&](int laidOut) {
        // Heard on the owner's thread, in order.
        QCOMPARE(QThread::currentThread(), QCoreApplication::instance()->thread());
        progress << laidOut;
    });
    job.start();
    QVERIFY(job.waitForFinished(30000));
    QVERIFY(workerThread != QThread::currentThreadId());
    QVERIFY(!job.wasCancelled());
    QVERIFY(!job.error());
    QCOMPARE(job.pagesLaidOut(), pages);
    QVERIFY(!progress.isEmpty());
    QCOMPARE(progress.last(), pages);
    QVERIFY(std::is_sorted(progress.begin(), progress.end()));
    QCOMPARE(shown.PageCount(), pages);
    QCOMPARE(shown.DocName(), expected.DocName());
    for (int page = 1; page <= pages; ++page)
        QCOMPARE(textsOf(shown, page), textsOf(expected, page));
}

void LayoutJobTest::pagesDrawnOverAfterPublishingArriveToo() {
    PageEngine shown;
    LayoutJob job([](PageEngine &engine, const CancelToken &cancel) {
        layOutPages(engine, cancel, 3);
        // The page-field pass draws over pages long published.
        engine.StartOverlay(1);
        engine.TextBox("Page 1 of  3", 1440, 14000, 4000, 0);
        engine.EndOverlay();
    });
    job.setTarget(&shown);
    job.start();
    QVERIFY(job.waitForFinished(30000));
    QVERIFY(textsOf(shown, 1).contains("Page 1 of  3@Arial"));
}

void LayoutJobTest::cancelStopsBetweenPages() {
    constexpr int Endless = 1000000;
    PageEngine shown;
    std::atomic<int> made{0};
    LayoutJob job([&](PageEngine &engine, const CancelToken &cancel) {
        layOutPages(engine, cancel, Endless, &made);
    });
    job.setTarget(&shown);
    int heard = 0;
    // Cancel from the progress callback once a few pages are on the target.
    job.setProgressCallback([&](int laidOut) {
        heard = laidOut;
        if (laidOut >= 3)
            job.cancel();
    });
    job.start();
    QVERIFY(job.waitForFinished(60000));
    QVERIFY(job.wasCancelled());
    QVERIFY(!job.error());
    QVERIFY(job.cancelToken().isCancelled());
    // Stopped long before the end, and every page made is on the target.
    QVERIFY2(made.load() < Endless / 10, qPrintable(QString::number(made.load())));
    QCOMPARE(shown.PageCount(), made.load());
    QCOMPARE(heard, made.load());
}

void LayoutJobTest::errorOfTheWorkComesBack() {
    PageEngine shown;
    LayoutJob job([](PageEngine &engine, const CancelToken &cancel) {
        layOutPages(engine, cancel, 2);
        engine.StartOverlay(9); // no such page
    });
    job.setTarget(&shown);
    job.start();
    QVERIFY(job.waitForFinished(30000));
    QVERIFY(job.error().has_value());
    QCOMPARE(job.error()->number(), ErrorNumber::InvalidProcedureCall);
    // What was laid out before the error still arrives.
    QCOMPARE(shown.PageCount(), 2);
}

void LayoutJobTest::cancelledPdfLeavesNoFile_data() {
    QTest::addColumn<bool>("existing");
    QTest::addColumn<bool>("cancelled");
    QTest::newRow("new file, cancelled") << false << true;
    QTest::newRow("existing file, cancelled") << true << true;
    QTest::newRow("existing file, written") << true << false;
}

void LayoutJobTest::cancelledPdfLeavesNoFile() {
    QFETCH(bool, existing);
    QFETCH(bool, cancelled);
    PageEngine engine;
    const CancelToken never;
    layOutPages(engine, never, 5);
    QTemporaryDir dir;
    const QString path = dir.filePath("report.pdf");
    const QByteArray old = "an older report, kept byte for byte";
    if (existing)
        testsupport::writeBytes(path, old);

    CancelToken cancel;
    int written = 0;
    const PdfExportResult result = exportPdfFile(engine, path, &cancel, [&](int page) {
        written = page;
        if (cancelled && page == 2)
            cancel.cancel();
    });
    if (cancelled) {
        QCOMPARE(result, PdfExportResult::Cancelled);
        QCOMPARE(written, 2);
        if (existing)
            QCOMPARE(testsupport::readBytes(path), old);
        else
            QVERIFY(!QFileInfo::exists(path));
    } else {
        QCOMPARE(result, PdfExportResult::Written);
        QVERIFY(testsupport::readBytes(path).startsWith("%PDF"));
    }
    // No temporary file is left beside it either way.
    const QStringList left = QDir(dir.path()).entryList(QDir::Files);
    QCOMPARE(left, existing || !cancelled ? QStringList{"report.pdf"} : QStringList{});
}

TAVREL_TEST(LayoutJobTest)
#include "LayoutJobTest.moc"
