#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "render/ExportFiles.h"
#include "render/ExportMarkupWriter.h"
#include "render/PageEngine.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

// The engine side of an export: what the fragment writer makes of drawn text, and the files
// written from the text the engine collected per page.
class HtmlExportTest : public QObject {
    Q_OBJECT

private slots:
    void dataIsEscapedBeforeRewriting_data();
    void dataIsEscapedBeforeRewriting();
    void rtfTextIsEscaped();
    void pageFiles_data();
    void pageFiles();
    void bottomBarFollowsItsPage();
};

void HtmlExportTest::dataIsEscapedBeforeRewriting_data() {
    QTest::addColumn<int>("source");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("written");
    const int plain = int(HtmlTextSource::TextBox);
    const int aligned = int(HtmlTextSource::AlignedTextBox);
    QTest::newRow("tags") << plain << "<script>x</script>"
                          << "&lt;script&gt;x&lt;/script&gt;";
    QTest::newRow("ampersand kept single") << plain << "A&B"
                                           << "A&amp;B";
    QTest::newRow("text box leaves returns") << plain << "A\rB"
                                             << "A\rB";
    QTest::newRow("aligned: return") << aligned << "<A>\rB"
                                     << "&lt;A&gt;<Br>B";
    QTest::newRow("aligned: two blanks") << aligned << "A  &\r\nB"
                                         << "A &nbsp &nbsp&amp;\r\nB";
}

void HtmlExportTest::dataIsEscapedBeforeRewriting() {
    QFETCH(int, source);
    QFETCH(QString, text);
    QFETCH(QString, written);
    const ExportMarkupWriter writer;
    const QString fragment = writer.textParagraph(HtmlTextSource(source), {}, 0, 0, 1440, text);
    QVERIFY2(fragment.endsWith(QStringLiteral(" >") + written + QStringLiteral("</font> </P>")),
             qPrintable(fragment));
}

void HtmlExportTest::rtfTextIsEscaped() {
    const ExportMarkupWriter writer;
    QCOMPARE(writer.rtfText({1, 0}, QStringLiteral("{a\\b} \u00e9")),
             QStringLiteral("\\ql \\{a\\\\b\\} \\'e9"));
    QCOMPARE(writer.rtfText({0, 0}, QStringLiteral("x")), QString());
}

void HtmlExportTest::pageFiles_data() {
    QTest::addColumn<int>("pages");
    QTest::addColumn<QStringList>("files");
    QTest::newRow("one page") << 1 << QStringList{"Job.htm"};
    QTest::newRow("two pages") << 2 << QStringList{"Job1.htm", "Job2.htm"};
    QTest::newRow("three pages") << 3 << QStringList{"Job1.htm", "Job2.htm", "Job3.htm"};
}

void HtmlExportTest::pageFiles() {
    QFETCH(int, pages);
    QFETCH(QStringList, files);
    QTemporaryDir dir;
    // An earlier one-page export of the same name: replaced, or deleted when there are pages.
    testsupport::writeBytes(dir.filePath("Job.htm"), "old");
    PageEngine engine;
    engine.setExportFile(dir.filePath("Job.htm"));
    engine.setExportNavBar(0, QStringLiteral("[%s|%s|%s|%s|%d of %d]"));
    engine.StartDoc();
    for (int page = 1; page <= pages; ++page) {
        if (page > 1)
            engine.NewPage();
        engine.ExportRaw(QStringLiteral("<p>page %1</p>").arg(page));
    }
    engine.EndDoc();
    const QStringList written = ExportFiles::writeHtml(engine);
    QCOMPARE(QDir(dir.path()).entryList({"*.htm"}, QDir::Files, QDir::Name), files);
    QCOMPARE(written.first(), ExportFiles::firstHtmlPage(engine.ExportFile(), pages));
    const QByteArray first = testsupport::readBytes(written.first());
    QVERIFY(first.contains("<p>page 1</p>"));
    const QByteArray bar =
        pages == 1
            ? "[ href=\"Job.htm\"| href=\"Job.htm\"| href=\"Job.htm\"| "
              "href=\"Job.htm\"|1 of 1]"
            : "[ href=\"Job1.htm\"| href=\"Job1.htm\"| href=\"Job2.htm\"| href=\"Job" +
                  QByteArray::number(pages) + ".htm\"|1 of " + QByteArray::number(pages) + "]";
    QVERIFY2(first.contains(bar), first.constData());
}

void HtmlExportTest::bottomBarFollowsItsPage() {
    // The bottom bar set while a page is overlaid belongs to that page only.
    PageEngine engine;
    engine.setExportFile(QStringLiteral("/nowhere/x.htm"));
    engine.StartDoc();
    engine.NewPage();
    engine.NewPage();
    engine.EndDoc();
    engine.StartOverlay(2);
    engine.setExportNavBar(1, QStringLiteral("bar two"));
    engine.EndOverlay();
    QCOMPARE(engine.pageNavBar(1), QString());
    QCOMPARE(engine.pageNavBar(2), QStringLiteral("bar two"));
    engine.Clear();
    QCOMPARE(engine.pageNavBar(2), QString());
}

TAVREL_TEST(HtmlExportTest)
#include "HtmlExportTest.moc"
