#include "shell/ReportExport.h"
#include "base/IniFile.h"
#include "base/RuntimeError.h"
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

    ReportSelection selection(bool cover, bool body, bool summary) const {
        const QString templates = exporttest::templateFolder();
        ReportSelection s;
        s.templates = {templates + QStringLiteral("/Classic.cov"),
                       templates + QStringLiteral("/Classic Customer.cst"),
                       templates + QStringLiteral("/Classic Customer.sum")};
        s.printable = {ReportSelection::flag(cover), ReportSelection::flag(body),
                       ReportSelection::flag(summary)};
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
    void templateLinesBecomeRules_data();
    void templateLinesBecomeRules();
    void rtfRowsTakeTheJobLengths();
    void relativeFolderLinksFromThePage();
    void failedExportKeepsTheOldSet();
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
    ReportSelection selection = job.selection(true, false, false);
    selection.templates[0] = job.dir.filePath(QStringLiteral("Logo.cov"));
    testsupport::writeBytes(selection.templates[0], cover);

    const QString first = ReportExport::exportHtml(job.context, selection, job.prompter,
                                                   job.exportFolder(), job.options());
    const QByteArray page = testsupport::readBytes(first);
    QVERIFY2(page.contains(" SRC=\"" + logo.toUtf8() + "\" HEIGHT=50 WIDTH=50 /> "),
             page.constData());
}

// Every line of a cover or summary template, in the page body and in the header and footer
// bands, goes into the page as a horizontal rule where it is drawn.
void ReportExportTest::templateLinesBecomeRules_data() {
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("golden");
    QTest::newRow("cover") << 0 << "render/html/cover-lines.htm";
    QTest::newRow("summary") << 2 << "render/html/summary-lines.htm";
}

void ReportExportTest::templateLinesBecomeRules() {
    QFETCH(int, row);
    QFETCH(QString, golden);
    Job job;
    QVERIFY(job.load(3));
    const ReportSelection selection = job.selection(row == 0, false, row == 2);
    const QString first = ReportExport::exportHtml(job.context, selection, job.prompter,
                                                   job.exportFolder(), job.options());
    const QByteArray page = testsupport::readBytes(first);
    // One rule per line of the template (each on the one page), wherever the line sits.
    const QByteArray layout = testsupport::readBytes(selection.templates[std::size_t(row)]);
    const qsizetype lines =
        QString::fromLatin1(layout).count(QRegularExpression(QStringLiteral("Line_\\d+_Placed=1")));
    QVERIFY(lines >= 3);
    QCOMPARE(page.count("<HR STYLE=\" Position: Absolute; left: "), lines);
    const QString problem = testsupport::compareWithGolden(job.portable(page), golden);
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

// A body template whose first column is the manufacturer, items without one, and the job's own
// lengths for the part number (24) and the manufacturer (12): every item row starts its own
// paragraph and each column is as wide as its length.
void ReportExportTest::rtfRowsTakeTheJobLengths() {
    Job job;
    QVERIFY(job.load(1));
    QByteArray sif = "SF=Harbor Point Offices.sp4\r\nST=Export Test\r\n";
    for (int i = 1; i <= 6; ++i) {
        sif += "PN=P-" + QByteArray::number(i) + "\r\nPD=Desk " + QByteArray::number(i) +
               "\r\nQT=1\r\nPL=10.00\r\nSP=6.00\r\n";
        if (i % 3 == 0)
            sif += "MC=LWS\r\n";
    }
    testsupport::writeBytes(job.dir.filePath(QStringLiteral("job.sif")), sif);
    const QString jobFile = job.dir.filePath(QStringLiteral("job.ini"));
    IniFile::write(jobFile, QStringLiteral("Printer"),
                   {{QStringLiteral("PN"), QStringLiteral("24,Part")},
                    {QStringLiteral("MC"), QStringLiteral("12")}});
    AppContext context;
    QVERIFY(Startup::loadJob(context, jobFile, job.dir.path(), job.prompter, PrinterList{}));
    QCOMPARE(context.fieldLengths.length(QStringLiteral("PN")), 24);
    QCOMPARE(context.fieldLengths.length(QStringLiteral("MC")), 12);

    // The Classic body with its first two columns' captions swapped: Mfg first, then the
    // description, then the part number.
    QByteArray body = testsupport::readBytes(exporttest::templateFolder() +
                                             QStringLiteral("/Classic Customer.cst"));
    QVERIFY(body.contains("Box_8_Caption=Part Number\r\n"));
    QVERIFY(body.contains("Box_10_Caption=Mfg\r\n"));
    body.replace("Box_8_Caption=Part Number\r\n", "Box_8_Caption=@\r\n");
    body.replace("Box_10_Caption=Mfg\r\n", "Box_10_Caption=Part Number\r\n");
    body.replace("Box_8_Caption=@\r\n", "Box_8_Caption=Mfg\r\n");
    ReportSelection selection = job.selection(false, true, false);
    selection.templates[1] = job.dir.filePath(QStringLiteral("Mfg First.cst"));
    testsupport::writeBytes(selection.templates[1], body);

    const QString rtf = ReportExport::exportRtf(context, selection, job.prompter,
                                                job.exportFolder(), job.options());
    const QByteArray document = testsupport::readBytes(rtf);
    // Mfg (12), description (its 34), part number: an item without a manufacturer starts its
    // row with twelve blanks after the paragraph mark's own delimiter.
    QVERIFY2(document.contains("\\par             Desk 1" + QByteArray(34 - 6, ' ') + "P-1"),
             document.constData());
    QVERIFY2(document.contains("\\par LWS" + QByteArray(9, ' ') + "Desk 3"), document.constData());
    const QString problem = testsupport::compareWithGolden(
        job.portable(document), QStringLiteral("render/html/mfg-first.rtf"));
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

// An export folder named relative to the working folder: the pages still name their status
// icons so that they are found from the pages' own folder.
void ReportExportTest::relativeFolderLinksFromThePage() {
    Job job;
    QVERIFY(job.load(3));
    QByteArray body = testsupport::readBytes(exporttest::templateFolder() +
                                             QStringLiteral("/Classic Customer.cst"));
    QVERIFY(body.contains("Box_13_Caption=EXT List$\r\n"));
    body.replace("Box_13_Caption=EXT List$\r\n", "Box_13_Caption=Complete\r\n");
    ReportSelection selection = job.selection(false, true, false);
    selection.templates[1] = job.dir.filePath(QStringLiteral("Icons.cst"));
    testsupport::writeBytes(selection.templates[1], body);
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(job.dir.path()));
    QString first;
    try {
        first = ReportExport::exportHtml(job.context, selection, job.prompter,
                                         QStringLiteral("html"), job.options());
    } catch (...) {
        QDir::setCurrent(before);
        throw;
    }
    QDir::setCurrent(before);
    const QString page = QString::fromLatin1(testsupport::readBytes(first));
    const QRegularExpression icon(QStringLiteral("SRC=\"([^\"]*status[^\"]*)\""));
    QRegularExpressionMatchIterator it = icon.globalMatch(page);
    QVERIFY(it.hasNext());
    while (it.hasNext()) {
        const QString link = it.next().captured(1);
        const QString resolved = QFileInfo(first).dir().filePath(link);
        QVERIFY2(QFileInfo(resolved).isFile(), qPrintable(link));
    }
}

// A page set that cannot be written whole (the disk fills up after its first page) leaves the
// old set as it was: no new page beside old ones, no file of the attempt left behind.
void ReportExportTest::failedExportKeepsTheOldSet() {
    Job job;
    QVERIFY(job.load(40));
    const ReportSelection selection = job.selection(true, true, true);
    ReportExport::exportHtml(job.context, selection, job.prompter, job.exportFolder(),
                             job.options());
    const QDir out(job.exportFolder());
    const auto everything = [](const QDir &folder) {
        return folder.entryList(QDir::Files | QDir::Hidden | QDir::Dirs | QDir::NoDotAndDotDot,
                                QDir::Name);
    };
    const QStringList files = everything(out);
    QVERIFY2(files.size() >= 3, qPrintable(files.join(QLatin1Char(','))));
    QHash<QString, QByteArray> old;
    for (const QString &name : files)
        old.insert(name, testsupport::readBytes(out.filePath(name)));

    // The new job's pages, written elsewhere first: the disk will hold its first page, not the
    // largest.
    Job larger;
    QVERIFY(larger.load(90));
    const QString probe = larger.dir.filePath(QStringLiteral("probe"));
    ReportExport::exportHtml(larger.context, selection, larger.prompter, probe, larger.options());
    const QFileInfoList pages =
        QDir(probe).entryInfoList({QStringLiteral("*.htm")}, QDir::Files, QDir::Name);
    QVERIFY(pages.size() > files.size());
    const qint64 room =
        QFileInfo(QDir(probe).filePath(QStringLiteral("Harbor Point Offices1.htm"))).size();
    qint64 largest = 0;
    for (const QFileInfo &page : pages)
        largest = std::max(largest, page.size());
    QVERIFY(largest > room);

    try {
        const exporttest::FileSizeLimit full{rlim_t(room)};
        ReportExport::exportHtml(larger.context, selection, larger.prompter, job.exportFolder(),
                                 larger.options());
        QFAIL("the export did not fail");
    } catch (const RuntimeError &error) {
        QCOMPARE(error.number(), 61);
    }
    QCOMPARE(everything(out), files);
    for (const QString &name : files)
        QCOMPARE(testsupport::readBytes(out.filePath(name)), old.value(name));
}

TAVREL_TEST(ReportExportTest)
#include "ReportExportTest.moc"
