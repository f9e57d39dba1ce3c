#include "shell/ReportExport.h"
#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "render/ExportTestFiles.h"
#include "shell/AppContext.h"
#include "shell/Startup.h"

#include <QDir>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

namespace {

// A job in a temporary folder on the bundled templates, loaded as start-up loads it.
struct Job {
    QTemporaryDir dir;
    ScriptedPrompter prompter;
    AppContext context;

    bool load(int items) {
        const QString job = exporttest::writeJob(dir.path(), items, {true, true, true});
        return Startup::loadJob(context, job, dir.path(), prompter, PrinterList{});
    }

    MenuSelection selection(bool cover, bool body, bool summary) const {
        const QString templates = exporttest::templateFolder();
        MenuSelection s;
        s.templates = {templates + QStringLiteral("/Classic.cov"),
                       templates + QStringLiteral("/Classic Customer.cst"),
                       templates + QStringLiteral("/Classic Customer.sum")};
        s.printable = {cover, body, summary};
        return s;
    }

    ExportOptions options(bool open = false) const {
        ExportOptions o;
        o.openWhenDone = open;
        o.reportTime = exporttest::fixedTime();
        return o;
    }

    QString exportFolder() const { return dir.filePath(QStringLiteral("out")); }

    // File text with the folders of this run replaced by fixed names, for golden files.
    QByteArray portable(QByteArray bytes) const {
        bytes.replace(dir.path().toUtf8(), "@JOB@");
        bytes.replace(exporttest::templateFolder().toUtf8(), "@TEMPLATES@");
        return bytes;
    }
};

} // namespace

// HTML and RTF export of a whole report job: the job re-run with export on, the page files and
// their names, the links of the navigation bars, and data that must not become markup.
class ReportExportTest : public QObject {
    Q_OBJECT

private slots:
    void twoPageJobMatchesGolden();
    void fileNaming_data();
    void fileNaming();
    void hostileValueIsEscaped();
    void rtfHoldsEveryItem();
    void coverPictureTakesTheBandForm();
};

void ReportExportTest::twoPageJobMatchesGolden() {
    Job job;
    QVERIFY(job.load(3));
    const QString first =
        ReportExport::exportHtml(job.context, job.selection(true, true, false), job.prompter,
                                 job.exportFolder(), job.options(true));
    const QDir out(job.exportFolder());
    QCOMPARE(first, out.filePath(QStringLiteral("Harbor Point Offices1.htm")));
    QCOMPARE(job.prompter.calls().size(), 1);
    QCOMPARE(job.prompter.calls().first().kind, QStringLiteral("openDocument"));
    QCOMPARE(job.prompter.calls().first().text, first);
    QVERIFY(!out.exists(QStringLiteral("Harbor Point Offices.htm")));
    for (int page = 1; page <= 2; ++page) {
        const QString name = QStringLiteral("Harbor Point Offices%1.htm").arg(page);
        const QString problem =
            testsupport::compareWithGolden(job.portable(testsupport::readBytes(out.filePath(name))),
                                           QStringLiteral("render/html/twopage%1.htm").arg(page));
        QVERIFY2(problem.isEmpty(), qPrintable(problem));
    }
    // Page 1's "next" arrow leads to page 2, page 2's "previous" back to page 1.
    const QByteArray page1 = testsupport::readBytes(first);
    QVERIFY(page1.contains(
        "<a href=\"Harbor%20Point%20Offices2.htm\" style=\"color:#99CCFF\">\xe8</a>"));
    QVERIFY(page1.contains("Page 1 of 2"));
}

void ReportExportTest::fileNaming_data() {
    QTest::addColumn<bool>("cover");
    QTest::addColumn<bool>("body");
    QTest::addColumn<bool>("summary");
    QTest::addColumn<int>("items");
    QTest::addColumn<QString>("base");
    QTest::addColumn<bool>("severalPages");

    QTest::newRow("body alone, one page")
        << false << true << false << 3 << "Classic CustomerCst" << false;
    QTest::newRow("body alone, several pages")
        << false << true << false << 90 << "Classic CustomerCst" << true;
    QTest::newRow("cover alone") << true << false << false << 3 << "ClassicCov" << false;
    QTest::newRow("summary alone") << false << false << true << 3 << "Classic CustomerSum" << false;
    QTest::newRow("whole job") << true << true << true << 3 << "Harbor Point Offices" << true;
}

void ReportExportTest::fileNaming() {
    QFETCH(bool, cover);
    QFETCH(bool, body);
    QFETCH(bool, summary);
    QFETCH(int, items);
    QFETCH(QString, base);
    QFETCH(bool, severalPages);
    Job job;
    QVERIFY(job.load(items));
    const QDir out(job.exportFolder());
    QVERIFY(out.mkpath(QStringLiteral(".")));
    // As left by an earlier one-page export of the same name: it goes when there are pages.
    const QString single = base + QStringLiteral(".htm");
    testsupport::writeBytes(out.filePath(single), "old");
    const QString first =
        ReportExport::exportHtml(job.context, job.selection(cover, body, summary), job.prompter,
                                 job.exportFolder(), job.options(true));
    QCOMPARE(job.prompter.calls().last().text, first);
    const QStringList written = out.entryList({QStringLiteral("*.htm")}, QDir::Files);
    if (!severalPages) {
        QCOMPARE(first, out.filePath(single));
        QCOMPARE(written, QStringList{single});
        return;
    }
    QCOMPARE(first, out.filePath(base + QStringLiteral("1.htm")));
    QVERIFY(!written.contains(single));
    QVERIFY(written.size() >= 2);
    for (int page = 1; page <= written.size(); ++page)
        QVERIFY2(written.contains(base + QString::number(page) + QStringLiteral(".htm")),
                 qPrintable(written.join(QLatin1Char(','))));
}

void ReportExportTest::hostileValueIsEscaped() {
    Job job;
    QVERIFY(job.load(3));
    const QString first = ReportExport::exportHtml(job.context, job.selection(false, true, false),
                                                   job.prompter, job.exportFolder(), job.options());
    const QByteArray page = testsupport::readBytes(first);
    QVERIFY(!page.contains("<script>"));
    QVERIFY2(
        page.contains("&lt;script&gt;alert(\"x\")&lt;/script&gt; &amp; {\\rtf1 \\par} caf\xe9"),
        page.constData());

    const QString rtf = ReportExport::exportRtf(job.context, job.selection(true, true, true),
                                                job.prompter, job.exportFolder(), job.options());
    QCOMPARE(QFileInfo(rtf).fileName(), QStringLiteral("Classic CustomerCst.rtf"));
    const QByteArray document = testsupport::readBytes(rtf);
    QVERIFY2(document.contains("<script>alert(\"x\")</script> & \\{\\\\rtf1 \\\\par\\} caf\\'e9"),
             document.constData());
    // The braces of the document itself stay balanced.
    QCOMPARE(document.count('{') - document.count("\\{"),
             document.count('}') - document.count("\\}"));
}

void ReportExportTest::rtfHoldsEveryItem() {
    Job job;
    QVERIFY(job.load(3));
    const QString rtf =
        ReportExport::exportRtf(job.context, job.selection(false, true, false), job.prompter,
                                job.exportFolder(), job.options(true));
    QCOMPARE(job.prompter.calls().last().kind, QStringLiteral("openDocument"));
    QCOMPARE(job.prompter.calls().last().text, rtf);
    const QString problem = testsupport::compareWithGolden(
        job.portable(testsupport::readBytes(rtf)), QStringLiteral("render/html/body.rtf"));
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

// The cover's and summary's pictures end as the band pictures do, not as item pictures.
void ReportExportTest::coverPictureTakesTheBandForm() {
    Job job;
    QVERIFY(job.load(3));
    const QString logo = job.dir.filePath(QStringLiteral("logo.png"));
    QImage image(20, 10, QImage::Format_RGB32);
    image.fill(Qt::darkBlue);
    QVERIFY(image.save(logo));
    QByteArray cover =
        testsupport::readBytes(exporttest::templateFolder() + QStringLiteral("/Classic.cov"));
    QVERIFY(cover.contains("Box_1_LogoFile=\r\n"));
    cover.replace("Box_1_LogoFile=\r\n", "Box_1_LogoFile=" + logo.toUtf8() + "\r\n");
    MenuSelection selection = job.selection(true, false, false);
    selection.templates[0] = job.dir.filePath(QStringLiteral("Logo.cov"));
    testsupport::writeBytes(selection.templates[0], cover);

    const QString first = ReportExport::exportHtml(job.context, selection, job.prompter,
                                                   job.exportFolder(), job.options());
    const QByteArray page = testsupport::readBytes(first);
    QVERIFY2(page.contains(" SRC=\"" + logo.toUtf8() + "\" HEIGHT=50 WIDTH=50 /> "),
             page.constData());
}

TAVREL_TEST(ReportExportTest)
#include "ReportExportTest.moc"
