#include "render/PrintJob.h"
#include "TestSection.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

namespace {

// Runs a job whose engine calls and renderer calls all go into one log.
struct JobRun {
    PageEngine engine;
    JobState job;
    QStringList log;
    PrintSettings settings;

    JobRun() {
        engine.setCallTrace([this](const char *member) { log << QString::fromLatin1(member); });
        settings.fontName = QStringLiteral("ARIAL");
        settings.marginLeft = 720;
        settings.marginRight = 720;
        settings.marginTop = 720;
        settings.marginBottom = 720;
    }

    void run(TestSection *cover, TestSection *body, TestSection *summary,
             const PrintCallbacks &callbacks = {}) {
        job.coverPrintable = cover != nullptr;
        job.bodyPrintable = body != nullptr;
        job.summaryPrintable = summary != nullptr;
        OutputHelpers out(engine, job);
        PrintCallbacks withYield = callbacks;
        withYield.yieldToUi = [this] { log << QStringLiteral("yield"); };
        PrintDocument(out, job, settings, {cover, body, summary}, withYield);
    }

    qsizetype count(const QString &entry) const { return log.count(entry); }

    QStringList texts(int page) const {
        QStringList texts;
        for (const PageItem &item : engine.page(page).items)
            if (const auto *text = std::get_if<TextItem>(&item))
                texts << text->text;
        return texts;
    }
};

} // namespace

class PrintJobTest : public QObject {
    Q_OBJECT

private slots:
    void startsTheDocumentInOrder();
    void sevenPageJobNumbersEveryPage();
    void noPageFieldReadsNoPageCount();
    void newPagesBetweenSections_data();
    void newPagesBetweenSections();
    void headerBandWinsOverFooter();
    void stopRequestDoesNothing();
    void htmlExportOpensTheFirstPage_data();
    void htmlExportOpensTheFirstPage();
    void pageFieldTexts();
};

void PrintJobTest::startsTheDocumentInOrder() {
    JobRun run;
    run.job.landscape = true;
    TestSection body(QStringLiteral("body"), 1, {}, &run.log);
    run.run(nullptr, &body, nullptr);
    const QStringList expected =
        strings({"Clear", "DocName=", "Header=", "FontName=", "FontSize=", "FontBold=",
                 "FontItalic=", "FontUnderline=", "MarginLeft=", "MarginRight=", "MarginTop=",
                 "MarginBottom=", "Orientation=", "StartDoc", "body render"});
    QCOMPARE(run.log.mid(0, expected.size()), expected);
    QCOMPARE(run.engine.DocName(), QStringLiteral("Kestrium - OrvantaPrint"));
    QCOMPARE(run.engine.Header(), QStringLiteral(" "));
    QCOMPARE(run.engine.Orientation(), 1);
    QCOMPARE(run.engine.MarginLeft(), 720.0);
    QCOMPARE(run.engine.FontName(), QStringLiteral("ARIAL"));
    QVERIFY(run.log.indexOf(QStringLiteral("EndDoc")) >
            run.log.indexOf(QStringLiteral("body render")));
    QVERIFY(!run.engine.isDocumentOpen());
}

void PrintJobTest::sevenPageJobNumbersEveryPage() {
    JobRun run;
    TestSection cover(QStringLiteral("cover"), 1, {false, true}, &run.log);
    TestSection body(QStringLiteral("body"), 5, {false, true}, &run.log);
    TestSection summary(QStringLiteral("summary"), 1, {true, false}, &run.log);
    run.run(&cover, &body, &summary);

    QCOMPARE(run.job.totalPageCount, qint16(7));
    QCOMPARE(run.job.coverPageCount, qint16(1));
    QCOMPARE(run.job.bodyPageCount, qint16(5));
    QCOMPARE(run.job.summaryPageCount, qint16(1));
    QCOMPARE(run.count(QStringLiteral("StartOverlay")), 7);
    QCOMPARE(run.count(QStringLiteral("EndOverlay")), 7);
    QCOMPARE(run.count(QStringLiteral("PageCount")), 1);
    QCOMPARE(run.engine.pages().size(), std::size_t(7));
    QVERIFY(run.log.indexOf(QStringLiteral("PageCount")) >
            run.log.indexOf(QStringLiteral("EndDoc")));
    const QStringList bands =
        run.log.filter(QRegularExpression(QStringLiteral("(header|footer) ")));
    QCOMPARE(bands, (strings({"cover footer 1", "body footer 2", "body footer 3", "body footer 4",
                              "body footer 5", "body footer 6", "summary header 7"})));
    // The overlay lands on its own page, after what the section drew there.
    QCOMPARE(run.texts(3), (strings({"body page 2", "Page 3 of  7"})));
    QCOMPARE(run.texts(7), (strings({"summary page 1", "Page 7 of  7"})));
}

void PrintJobTest::noPageFieldReadsNoPageCount() {
    JobRun run;
    TestSection cover(QStringLiteral("cover"), 1, {}, &run.log);
    TestSection body(QStringLiteral("body"), 3, {}, &run.log);
    run.run(&cover, &body, nullptr);
    QCOMPARE(run.engine.pages().size(), std::size_t(4));
    QCOMPARE(run.count(QStringLiteral("PageCount")), 0);
    QCOMPARE(run.count(QStringLiteral("StartOverlay")), 0);
}

void PrintJobTest::newPagesBetweenSections_data() {
    QTest::addColumn<bool>("cover");
    QTest::addColumn<bool>("body");
    QTest::addColumn<bool>("summary");
    QTest::addColumn<int>("newPages");
    QTest::addColumn<int>("yields");
    QTest::addColumn<QString>("firstPage");
    QTest::newRow("summary only") << false << false << true << 0 << 0 << "summary page 1";
    QTest::newRow("cover and summary") << true << false << true << 1 << 0 << "cover page 1";
    QTest::newRow("cover and body") << true << true << false << 1 << 1 << "cover page 1";
    QTest::newRow("body and summary") << false << true << true << 1 << 0 << "body page 1";
    QTest::newRow("all three") << true << true << true << 2 << 1 << "cover page 1";
    QTest::newRow("body only") << false << true << false << 0 << 0 << "body page 1";
}

void PrintJobTest::newPagesBetweenSections() {
    QFETCH(bool, cover);
    QFETCH(bool, body);
    QFETCH(bool, summary);
    QFETCH(int, newPages);
    QFETCH(int, yields);
    QFETCH(QString, firstPage);
    JobRun run;
    // One page each, so every NewPage in the log is the job's own.
    TestSection coverSection(QStringLiteral("cover"), 1, {}, &run.log);
    TestSection bodySection(QStringLiteral("body"), 1, {}, &run.log);
    TestSection summarySection(QStringLiteral("summary"), 1, {}, &run.log);
    run.run(cover ? &coverSection : nullptr, body ? &bodySection : nullptr,
            summary ? &summarySection : nullptr);
    QCOMPARE(run.count(QStringLiteral("NewPage")), newPages);
    QCOMPARE(run.count(QStringLiteral("yield")), yields);
    QCOMPARE(run.texts(1).value(0), firstPage);
    if (yields > 0) // the yield comes right before the body's NewPage
        QCOMPARE(run.log.at(run.log.indexOf(QStringLiteral("yield")) + 1),
                 QStringLiteral("NewPage"));
}

void PrintJobTest::headerBandWinsOverFooter() {
    JobRun run;
    TestSection body(QStringLiteral("body"), 2, {true, true}, &run.log);
    run.run(nullptr, &body, nullptr);
    QCOMPARE(run.log.filter(QStringLiteral("body header")).size(), 2);
    QCOMPARE(run.log.filter(QStringLiteral("body footer")).size(), 0);
}

void PrintJobTest::stopRequestDoesNothing() {
    JobRun run;
    run.job.stopRequest = true;
    TestSection body(QStringLiteral("body"), 2, {true, false}, &run.log);
    run.run(nullptr, &body, nullptr);
    QVERIFY2(run.log.isEmpty(), qPrintable(run.log.join(QLatin1Char(' '))));
}

void PrintJobTest::htmlExportOpensTheFirstPage_data() {
    QTest::addColumn<int>("pages");
    QTest::addColumn<QString>("opened");
    QTest::addColumn<QString>("description");
    QTest::addColumn<bool>("baseFileKept");
    QTest::newRow("one page") << 1 << "Report.htm"
                              << "preveiw page layout html" << true;
    QTest::newRow("two pages") << 2 << "Report1.htm"
                               << "preview paghe layout html" << false;
}

void PrintJobTest::htmlExportOpensTheFirstPage() {
    QFETCH(int, pages);
    QFETCH(QString, opened);
    QFETCH(QString, description);
    QFETCH(bool, baseFileKept);
    QTemporaryDir dir;
    const QString base = dir.filePath(QStringLiteral("Report.htm"));
    testsupport::writeBytes(base, "<html/>");
    JobRun run;
    run.job.htmlExport = true;
    run.job.exportDirectory = dir.path();
    run.job.exportBaseName = QStringLiteral("Report");
    QString exportFileDuringJob;
    QStringList openedFiles;
    PrintCallbacks callbacks;
    callbacks.openDocument = [&](const QString &path, const QString &text) {
        openedFiles << path << text;
    };
    TestSection body(QStringLiteral("body"), pages, {}, &run.log);
    run.engine.addNewPageListener([&](int) { exportFileDuringJob = run.engine.ExportFile(); });
    run.run(nullptr, &body, nullptr, callbacks);
    if (pages > 1)
        QCOMPARE(exportFileDuringJob, base);
    QCOMPARE(run.engine.ExportFormat(), 3);
    QCOMPARE(openedFiles, (QStringList{dir.filePath(opened), description}));
    QCOMPARE(QFile::exists(base), baseFileKept);
    QCOMPARE(run.engine.ExportFile(), QString()); // the export ends with the job
}

void PrintJobTest::pageFieldTexts() {
    QCOMPARE(pageOfText(3, 7), QStringLiteral("Page 3 of  7"));
    QCOMPARE(pageText(12), QStringLiteral("Page 12"));
}

TAVREL_TEST(PrintJobTest)
#include "PrintJobTest.moc"
