#include "render/PageBands.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "render/OutputHelpers.h"
#include "render/PageEngine.h"
#include "render/ReportData.h"
#include "spec/FieldCatalog.h"

#include <QTest>

#include <optional>

using namespace tavrel;

namespace {

BoxInfo &placeBox(TemplateLayout &layout, const QString &caption, const QString &container,
                  QRect geometry) {
    const int slot = layout.freeBoxSlot();
    BoxInfo &box = layout.box(slot);
    box.index = qint16(slot);
    box.placed = true;
    box.visible = true;
    box.caption = caption;
    box.nameIndex = qint16(FieldCatalog::indexOfCaption(caption));
    box.container = container;
    box.header = container == Container::header();
    box.footer = container == Container::footer();
    box.fontName = QStringLiteral("Arial");
    box.fontSize = 10;
    box.left = geometry.x();
    box.top = geometry.y();
    box.width = geometry.width();
    box.height = geometry.height();
    return box;
}

ReportData sampleData() {
    ReportData data;
    data.companyName = QStringLiteral("Harbor Point Office Interiors");
    data.activeDocument = QStringLiteral("/jobs/Harbor Point Offices.sp4");
    data.sifPath = QStringLiteral("/tmp/print/demo.sif");
    data.reportTime = QDateTime(QDate(2026, 3, 7), QTime(9, 5, 4));
    data.savedTime = QDateTime(QDate(2025, 12, 31), QTime(23, 59, 1));
    return data;
}

std::optional<TextItem> findText(const Page &page, const QString &text) {
    for (const PageItem &item : page.items) {
        if (const auto *t = std::get_if<TextItem>(&item); t && t->text == text)
            return *t;
    }
    return std::nullopt;
}

} // namespace

class PageBandsTest : public QObject {
    Q_OBJECT

private slots:
    void captionValues_data();
    void captionValues();
    void pageFieldFlagsFollowTheFirstBox_data();
    void pageFieldFlagsFollowTheFirstBox();
    void bandsSitAtTheMarginsAndDrawTheirBoxes();
    void missingLogoDrawsNothing();
};

void PageBandsTest::captionValues_data() {
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("expected");
    QTest::newRow("company") << "Company Name"
                             << "Harbor Point Office Interiors";
    QTest::newRow("file title") << "Orvanta File Title"
                                << "Harbor Point Offices";
    QTest::newRow("file path") << "File Path"
                               << "/jobs/Harbor Point Offices.sp4";
    QTest::newRow("sif name") << "Sif File Name"
                              << "demo.sif";
    QTest::newRow("report date") << "Report Date"
                                 << "03-07-2026";
    QTest::newRow("report time") << "Report Time"
                                 << "09:05:04";
    QTest::newRow("report both") << "Report Date & Time"
                                 << "03-07-2026 09:05:04";
    QTest::newRow("saved date") << "Saved Date"
                                << "12-31-2025";
    QTest::newRow("saved time") << "Saved Time"
                                << "23:59:01";
    QTest::newRow("saved both") << "Saved Date & Time"
                                << "12-31-2025 23:59:01";
    QTest::newRow("page of") << "Page n of  m"
                             << "Page 3 of  7";
    QTest::newRow("page") << "Page"
                          << "Page 3";
    QTest::newRow("not a page caption") << "Part Number" << QString();
}

void PageBandsTest::captionValues() {
    QFETCH(QString, caption);
    QFETCH(QString, expected);
    QCOMPARE(PageCaptions::value(caption, sampleData(), 3, 7), expected);
}

void PageBandsTest::pageFieldFlagsFollowTheFirstBox_data() {
    QTest::addColumn<QStringList>("containers"); // of the "Page n of  m" boxes, in slot order
    QTest::addColumn<bool>("inHeader");
    QTest::addColumn<bool>("inFooter");
    QTest::newRow("none") << QStringList() << false << false;
    QTest::newRow("header") << QStringList{Container::header()} << true << false;
    QTest::newRow("footer then header")
        << QStringList{Container::footer(), Container::header()} << false << true;
    QTest::newRow("body first stops the scan")
        << QStringList{Container::mainPort(), Container::footer()} << false << false;
}

void PageBandsTest::pageFieldFlagsFollowTheFirstBox() {
    QFETCH(QStringList, containers);
    QFETCH(bool, inHeader);
    QFETCH(bool, inFooter);
    TemplateLayout layout;
    placeBox(layout, QStringLiteral("Company Name"), Container::header(), {0, 0, 2000, 300});
    for (const QString &container : containers)
        placeBox(layout, QStringLiteral("Page n of  m"), container, {0, 0, 2000, 300});
    const PageFieldFlags flags = findPageFieldFlags(layout);
    QCOMPARE(flags.inHeader, inHeader);
    QCOMPARE(flags.inFooter, inFooter);
}

void PageBandsTest::bandsSitAtTheMarginsAndDrawTheirBoxes() {
    TemplateLayout layout;
    placeBox(layout, QStringLiteral("Company Name"), Container::header(), {100, 50, 4000, 300});
    BoxInfo &note =
        placeBox(layout, QStringLiteral("Quote"), Container::header(), {6000, 0, 2000, 400});
    note.notes = true;
    note.notesName = QStringLiteral("Customer Quotation");
    note.textAlign = TextAlign::Right;
    placeBox(layout, QStringLiteral("Page n of  m"), Container::footer(), {0, 60, 3000, 240});
    LineInfo &rule = layout.line(1);
    rule.placed = true;
    rule.container = Container::footer();
    rule.width = 10000;
    rule.height = 20;
    rule.backColor = 255;

    const ReportData data = sampleData();
    PageBands bands(layout, data);
    QCOMPARE(bands.height(PageBands::Band::Header), 400.0);
    QCOMPARE(bands.height(PageBands::Band::Footer), 300.0);
    QVERIFY(bands.isDeferred(PageBands::Band::Footer));
    QVERIFY(!bands.isDeferred(PageBands::Band::Header));

    PageEngine engine;
    JobState job;
    OutputHelpers out(engine, job);
    out.SetPrintMargins(720, 720, 500, 600);
    engine.StartDoc();
    QCOMPARE(bands.bodyOrigin(engine), QPointF(720, 900));
    bands.draw(out, PageBands::Band::Header, 1, 2);
    bands.draw(out, PageBands::Band::Footer, 1, 2);
    engine.EndDoc();

    const Page &page = engine.page(1);
    const std::optional<TextItem> company =
        findText(page, QStringLiteral("Harbor Point Office Interiors"));
    QVERIFY(company);
    QCOMPARE(company->x, 820.0);
    QCOMPARE(company->y, 550.0);
    const std::optional<TextItem> quote = findText(page, QStringLiteral("Customer Quotation"));
    QVERIFY(quote);
    QCOMPARE(quote->align, 2);               // the designer's "right" is the engine's 2
    QCOMPARE(quote->background, qint64(-1)); // white boxes are not filled
    const std::optional<TextItem> pageOf = findText(page, QStringLiteral("Page 1 of  2"));
    QVERIFY(pageOf);
    QCOMPARE(pageOf->y, 15840.0 - 600 - 300 + 60);
    std::optional<LineItem> line;
    for (const PageItem &item : page.items) {
        if (const auto *l = std::get_if<LineItem>(&item); l && !line)
            line = *l;
    }
    QVERIFY(line);
    QCOMPARE(line->y1, 15840.0 - 600 - 300 + 10);
    QCOMPARE(line->x2, 720.0 + 10000);
    QCOMPARE(line->penWidth, 20.0);
    QCOMPARE(line->color, ColorNumber(255));
}

void PageBandsTest::missingLogoDrawsNothing() {
    TemplateLayout layout;
    BoxInfo &logo =
        placeBox(layout, QStringLiteral("Logo"), Container::header(), {0, 0, 2000, 1000});
    logo.logo = true;
    logo.logoFile = QStringLiteral("/nonexistent/logo.png");
    const ReportData data = sampleData();
    PageBands bands(layout, data);
    PageEngine engine;
    JobState job;
    OutputHelpers out(engine, job);
    engine.StartDoc();
    bands.draw(out, PageBands::Band::Header, 1, 1);
    engine.EndDoc();
    QVERIFY(engine.page(1).items.empty());
}

TAVREL_TEST(PageBandsTest)
#include "PageBandsTest.moc"
