#include "render/HtmlPageSet.h"
#include "render/HtmlFragments.h"

#include "base/RuntimeError.h"

#include "common/TestRegistry.h"
#include "common/TestSupport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

class HtmlPageSetTest : public QObject {
    Q_OBJECT

private slots:
    void fillTemplate_data();
    void fillTemplate();
    void encode_data();
    void encode();
    void onePageKeepsTheUnnumberedFile();
    void severalPagesDeleteTheUnnumberedFile();
    void navigationLinks();
    void twoPageJobMatchesGoldenFiles();
    void overlaysAppendToEarlierPages();
};

void HtmlPageSetTest::fillTemplate_data() {
    QTest::addColumn<QString>("barTemplate");
    QTest::addColumn<QString>("expected");
    QTest::newRow("links and numbers in order") << "<a%s>|<a%s>|%d of %d|<a%s>|<a%s>"
                                                << "<a 1>|<a 2>|3 of 7|<a 4>|<a 5>";
    QTest::newRow("doubled percent") << "width: 100%%;"
                                     << "width: 100%;";
    QTest::newRow("arguments run out") << "%s%s%s%s%s|%d%d%d"
                                       << " 1 2 4 5|37";
    QTest::newRow("other conversions copied") << "%x 50% %"
                                              << "%x 50% %";
}

void HtmlPageSetTest::fillTemplate() {
    QFETCH(QString, barTemplate);
    QFETCH(QString, expected);
    QCOMPARE(HtmlPageSet::fillTemplate(barTemplate, {" 1", " 2", " 4", " 5"}, {3, 7}), expected);
}

void HtmlPageSetTest::encode_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("ascii") << "Page 1" << QByteArray("Page 1");
    QTest::newRow("wingdings arrows") << "\u00E7\u00E8" << QByteArray("\xE7\xE8");
    QTest::newRow("euro in the code page") << "\u20AC" << QByteArray("\x80");
    QTest::newRow("question mark stays") << "?" << QByteArray("?");
    QTest::newRow("outside the code page") << "\u2603" << QByteArray("&#9731;");
    QTest::newRow("outside the plane")
        << QString::fromUcs4(U"\U0001F600") << QByteArray("&#128512;");
    QTest::newRow("broken surrogate") << QString(QChar(0xD800)) << QByteArray("&#65533;");
}

void HtmlPageSetTest::encode() {
    QFETCH(QString, text);
    QFETCH(QByteArray, expected);
    QCOMPARE(HtmlPageSet::encode(text), expected);
}

void HtmlPageSetTest::onePageKeepsTheUnnumberedFile() {
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    HtmlPageSet pages(dir.filePath("OfficeCst.htm"));
    pages.append("\r\nonly page");
    QCOMPARE(pages.pageCount(), 1);
    QCOMPARE(pages.write(), QStringList{dir.filePath("OfficeCst.htm")});
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{"OfficeCst.htm"});

    // No pages: nothing is written.
    HtmlPageSet empty(dir.filePath("Empty.htm"));
    QVERIFY(empty.write().isEmpty());
    QVERIFY(!QFile::exists(dir.filePath("Empty.htm")));
}

void HtmlPageSetTest::severalPagesDeleteTheUnnumberedFile() {
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    testsupport::writeBytes(dir.filePath("OfficeCst.htm"), "left from a one-page export");
    HtmlPageSet pages(dir.filePath("OfficeCst.htm"));
    for (int page = 1; page <= 3; ++page)
        QCOMPARE(pages.addPage(), page);
    const QStringList written = pages.write();
    QCOMPARE(written, (QStringList{dir.filePath("OfficeCst1.htm"), dir.filePath("OfficeCst2.htm"),
                                   dir.filePath("OfficeCst3.htm")}));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files),
             (QStringList{"OfficeCst1.htm", "OfficeCst2.htm", "OfficeCst3.htm"}));
}

void HtmlPageSetTest::navigationLinks() {
    HtmlPageSet pages("/tmp/html/My Job.htm");
    pages.setTopBar("[%s|%s|%d of %d|%s|%s]");
    for (int page = 1; page <= 3; ++page)
        pages.addPage();
    QVERIFY(pages.pageText(1).contains(
        "[ href=\"My%20Job1.htm\"| href=\"My%20Job1.htm\"|1 of 3| href=\"My%20Job2.htm\"| "
        "href=\"My%20Job3.htm\"]"));
    QVERIFY(pages.pageText(2).contains(
        "[ href=\"My%20Job1.htm\"| href=\"My%20Job1.htm\"|2 of 3| href=\"My%20Job3.htm\"| "
        "href=\"My%20Job3.htm\"]"));
    QVERIFY(pages.pageText(3).contains(
        "[ href=\"My%20Job1.htm\"| href=\"My%20Job2.htm\"|3 of 3| href=\"My%20Job3.htm\"| "
        "href=\"My%20Job3.htm\"]"));
    QVERIFY(pages.pageText(1).contains("<title>My Job</title>"));
}

void HtmlPageSetTest::twoPageJobMatchesGoldenFiles() {
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    HtmlPageSet pages(dir.filePath("Job.htm"));
    pages.setTopBar(HtmlFragments::topNavigationBar());

    HtmlTextFormat caption;
    caption.fontSize = 10;
    caption.fontName = "Arial";
    caption.weight = true;
    HtmlTextFormat cell = caption;
    cell.weight = false;

    pages.addPage();
    pages.append(
        HtmlFragments::textParagraph(caption, 720, 720, 2880, htmlAlignedText(u"Part Number")));
    pages.append(HtmlFragments::horizontalRule(720, 1000));
    pages.append(HtmlFragments::textParagraph(cell, 720, 1100, 2880,
                                              HtmlMarkup::fromData(u"Desk <72\" x 30\">")));
    pages.append(HtmlFragments::statusIcon("status112.png", 3700, 1100));
    pages.append(HtmlFragments::textParagraph(
        cell, 4000, 1100, 2880,
        HtmlMarkup::fromJoinedData(u"[=Notes:=] <BR> Caf\u00E9 & bar", u" <BR> ")));

    pages.addPage();
    pages.append(
        HtmlFragments::textParagraph(cell, 720, 1100, 2880, HtmlMarkup::fromData(u"Chair \u2603")));
    pages.append(HtmlFragments::picture("/data/images/chair.jpg", 4000, 1100));
    pages.setBottomBar(2, HtmlFragments::bottomNavigationBar(1400));

    QCOMPARE(pages.write(), (QStringList{dir.filePath("Job1.htm"), dir.filePath("Job2.htm")}));
    for (const QString name : {"Job1.htm", "Job2.htm"}) {
        const QString failure = testsupport::compareWithGolden(
            testsupport::readBytes(dir.filePath(name)), "render/export/twopage/" + name);
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
    }
}

void HtmlPageSetTest::overlaysAppendToEarlierPages() {
    HtmlPageSet pages("/tmp/x/Base.htm");
    pages.addPage();
    pages.append("one");
    pages.addPage();
    pages.append("two");
    pages.append(1, "+overlay");
    QVERIFY(pages.pageText(1).contains("<body>\r\none+overlay\r\n</body>"));
    QVERIFY(pages.pageText(2).contains("<body>\r\ntwo\r\n</body>"));
    QCOMPARE(pages.filePath(2), QString("/tmp/x/Base2.htm"));

    try {
        pages.append(3, "nowhere");
        QFAIL("a page that does not exist was accepted");
    } catch (const RuntimeError &error) {
        QCOMPARE(error.number(), ErrorNumber::SubscriptOutOfRange);
    }
}

TAVREL_TEST(HtmlPageSetTest)
#include "HtmlPageSetTest.moc"
