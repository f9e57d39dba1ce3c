#include "render/SummaryRenderer.h"
#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "render/CoverRenderer.h"
#include "render/ImageOutput.h"
#include "render/OutputHelpers.h"
#include "render/PageEngine.h"
#include "render/PrintJob.h"
#include "render/ReportData.h"
#include "render/SectionRun.h"
#include "render/SummaryRendererFlow.h"
#include "render/TestSection.h"
#include "spec/OrderFileReader.h"
#include "spec/SifReader.h"
#include "templates/TemplateReader.h"
#include "templates/TemplateWriter.h"

#include <QImage>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

namespace {

// A summary run: boxes in the body are totals, and the company name is set.
struct SummaryRun : SectionRun<SummaryRenderer> {
    SummaryRun()
        : SectionRun(QStringLiteral(".sum")) {
        data.companyName = QStringLiteral("Harbor Point Office Interiors");
    }

    BoxInfo &box(const QString &caption, int left, int top, int width, int height, qint16 level = 1,
                 const QString &container = Container::mainPort()) {
        BoxInfo &box = SectionRun::box(caption, left, top, width, height, level, container);
        box.total = container == Container::mainPort();
        return box;
    }

    void withOrder() {
        order.present = true;
        data.cifPresent = true;
    }

    void addCharge(const QString &name, const QString &amount) {
        order.charges.push_back({amount, name, {}});
    }
};

constexpr double Margin = SummaryRun::Margin;

} // namespace

class SummaryRendererTest : public QObject {
    Q_OBJECT

private slots:
    void fillsTotals_data();
    void fillsTotals();
    void headerPercentagesAreFractions();
    void chargeLines_data();
    void chargeLines();
    void chargeLinePositions();
    void nonNumericChargeIsReportedOnce();
    void emptyBoxTakesOneLine();
    void levelsStackAndGrowthPushesDown();
    void optionsPrintThreeTexts();
    void pageBreakRepeatsBands();
    void pageNumbersRunAcrossSections();
    void demoPagesLookAsReviewed_data();
    void demoPagesLookAsReviewed();
};

void SummaryRendererTest::fillsTotals_data() {
    QTest::addColumn<QString>("caption");
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("orderPresent");
    QTest::addColumn<double>("charges");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("text");

    const auto row = [](const char *name, const char *caption, double value, bool present,
                        double charges, const char *label, const char *text) {
        QTest::newRow(name) << QString::fromUtf8(caption) << value << present << charges
                            << QString::fromUtf8(label) << QString::fromUtf8(text);
    };
    row("list", "Total List$", 1234.5, false, 0, "Total Unit List:", "$1,234.50");
    row("weight 0 has no leading zero", "Total Weight", 0, false, 0, "Total Weight:", ".00");
    row("volume", "Total Volume", 12.345, false, 0, "Total Volume:", "12.35");
    row("customer", "Total Cust$", 1000, false, 0, "Total Customer:", "$1,000.00");
    row("positive percentage gets minus", "Total Cust%", 0.2, false, 0,
        "Total Customer Percentage:", "-%20.00000");
    row("negative percentage gets plus", "Total Cust%", -0.2, false, 0,
        "Total Customer Percentage:", "+%20.00000");
    row("dealer percentage", "Total Deal%", 0.125, false, 0,
        "Total Purchase Percentage:", "-%12.50000");
    row("margin percentage inverted too", "Total Marg%", -0.125, false, 0,
        "Total Margin Percent:", "+%12.50000");
    row("zero percentage still signed", "Total Marg%", 0, false, 0,
        "Total Margin Percent:", "-%0.00000");
    row("dealer", "Total Deal$", 800, false, 0, "Total Purchase:", "$800.00");
    row("margin", "Total Marg$", -50, false, 0, "Total Margin:", "-$50.00");
    row("discount", "Total Cust Disc$", 200, false, 0, "Total Customer Discount:", "$200.00");
    row("options", "Total Option / Description", 0, true, 0, "Options / Descriptions:", "");
    row("charges without order file", "Total Additional Charges", 0, false, 35, "", "");
    row("charges summing to 0", "Total Additional Charges", 0, true, 0, "", "");
    row("charges summing below 0", "Total Additional Charges", 0, true, -5, "", "");
    row("charges", "Total Additional Charges", 0, true, 1235, "Total Added Charges:", "$1,235.00");
    row("customer order without charges", "Total Cust$ Order", 1000, false, 0,
        "Total Customer Order:", "$1,000.00");
    row("customer order", "Total Cust$ Order", 1000, true, 35,
        "Total Customer Order:", "$1,035.00");
    row("dealer order", "Total Deal$ Order", 800, true, 35, "Total Dealer Order:", "$835.00");
    row("not a total", "Part Number", 5, true, 0, "kept", "kept");
}

void SummaryRendererTest::fillsTotals() {
    QFETCH(QString, caption);
    QFETCH(double, value);
    QFETCH(bool, orderPresent);
    QFETCH(double, charges);
    QFETCH(QString, label);
    QFETCH(QString, text);

    SummaryTotals totals;
    totals.list = totals.weight = totals.volume = totals.customer = totals.dealer = value;
    totals.margin = totals.customerDiscount = value;
    totals.customerPercent = totals.dealerPercent = totals.marginPercent = value;
    totals.additionalCharges = charges;
    totals.orderPresent = orderPresent;
    SummaryFieldLists lists;
    lists.labels.resize(138, QStringLiteral("kept"));
    lists.values.resize(138, QStringLiteral("kept"));
    SummaryFields::fill(lists, totals, 7, caption);
    QCOMPARE(lists.labels[7], label);
    QCOMPARE(lists.values[7], text);
}

void SummaryRendererTest::headerPercentagesAreFractions() {
    SpecData spec;
    spec.header.totalCustomerDiscountPercent = 20;
    spec.header.totalDealerDiscountPercent = -12.5;
    spec.header.totalMarginPercent = 100;
    const SummaryTotals totals = SummaryTotals::from(spec, 0, false);
    SummaryFieldLists lists;
    SummaryFields::fill(lists, totals, 1, QStringLiteral("Total Cust%"));
    SummaryFields::fill(lists, totals, 2, QStringLiteral("Total Deal%"));
    SummaryFields::fill(lists, totals, 3, QStringLiteral("Total Marg%"));
    QCOMPARE(lists.values[1], QStringLiteral("-%20.00000"));
    QCOMPARE(lists.values[2], QStringLiteral("+%12.50000"));
    QCOMPARE(lists.values[3], QStringLiteral("-%100.00000"));
}

void SummaryRendererTest::chargeLines_data() {
    QTest::addColumn<QString>("amount");
    QTest::addColumn<bool>("printed");
    QTest::addColumn<QString>("text");
    QTest::newRow("amount") << "10.00" << true << "$10.00";
    QTest::newRow("zero with decimals") << "0.00" << false << "$0.00";
    QTest::newRow("zero") << "0" << false << "$0.00";
    QTest::newRow("empty") << "" << false << "";
    QTest::newRow("whole number") << "25" << true << "$25.00";
    QTest::newRow("cents only") << " 0.50" << true << "$0.50";
    QTest::newRow("no thousands commas") << "1250" << true << "$1250.00";
    QTest::newRow("not a number") << "call us 1" << true << "call us 1";
}

void SummaryRendererTest::chargeLines() {
    QFETCH(QString, amount);
    QFETCH(bool, printed);
    QFETCH(QString, text);
    const AdditionalCharge charge{amount, QStringLiteral("Design"), {}};
    QCOMPARE(SummaryFields::chargeIsPrinted(charge), printed);
    QCOMPARE(SummaryFields::chargeAmountText(charge), text);
}

void SummaryRendererTest::chargeLinePositions() {
    SummaryRun run;
    run.withOrder();
    run.addCharge(QStringLiteral("Design"), QStringLiteral("10.00"));
    run.addCharge(QStringLiteral("Shipping"), QStringLiteral("0.00"));
    run.addCharge(QStringLiteral("Freight: "), QStringLiteral("25"));
    run.addCharge(QStringLiteral("Install"), QString());
    run.box(QStringLiteral("Additional Charges"), 1000, 0, 5000, 260);
    run.box(QStringLiteral("Total Additional Charges"), 1000, 2000, 5000, 260, 2);
    run.render();

    QCOMPARE(run.prompter.messages(), QStringList());
    const double left = Margin + 1000 + 30;
    const auto design = run.find(QStringLiteral("Design"));
    const auto designAmount = run.find(QStringLiteral("$10.00"));
    const auto freight = run.find(QStringLiteral("Freight: "));
    const auto freightAmount = run.find(QStringLiteral("$25.00"));
    QVERIFY(design && designAmount && freight && freightAmount);
    QVERIFY(!run.find(QStringLiteral("Shipping")));
    QVERIFY(!run.find(QStringLiteral("Install")));
    QCOMPARE(design->x, left);
    QCOMPARE(design->y, Margin);
    QCOMPARE(designAmount->x, left + run.width(QStringLiteral("Design")) + 300);
    QCOMPARE(freight->y, Margin + run.lineHeight());
    QCOMPARE(freightAmount->x, left + run.width(QStringLiteral("Freight: ")) + 300);
    // The total sums every charge, the ones left out of the list included.
    QVERIFY(run.find(QStringLiteral("$35.00")));
    QVERIFY(run.find(QStringLiteral("Total Added Charges:")));
}

void SummaryRendererTest::nonNumericChargeIsReportedOnce() {
    SummaryRun run;
    run.withOrder();
    run.addCharge(QStringLiteral("Design"), QStringLiteral("lots"));
    run.box(QStringLiteral("Total Additional Charges"), 0, 0, 5000, 260);
    run.box(QStringLiteral("Total Cust$ Order"), 0, 400, 5000, 260, 2);
    run.box(QStringLiteral("Total Deal$ Order"), 0, 800, 5000, 260, 3);
    run.spec.header.totalSell = 100;
    run.render();
    QCOMPARE(run.prompter.messages().size(), 1);
    QVERIFY(run.prompter.messages().first().contains(QStringLiteral("Summary Page Preview.")));
    QVERIFY(run.prompter.messages().first().contains(QStringLiteral("Error Number: 13")));
    QVERIFY(!run.find(QStringLiteral("Total Added Charges:")));
    QVERIFY(run.find(QStringLiteral("$100.00")));
    QCOMPARE(run.renderer->pageCount(), 1);
}

void SummaryRendererTest::emptyBoxTakesOneLine() {
    SummaryRun run;
    run.withOrder();
    run.box(QStringLiteral("Shipping Notes"), 0, 0, 5000, 100);
    run.box(QStringLiteral("Total Cust$"), 0, 120, 5000, 260);
    run.render();
    // The empty notes take one line; the next box of the level follows 300 twips on.
    QCOMPARE(run.at(QStringLiteral("Total Customer:")).y, Margin + run.lineHeight() + 300);
}

void SummaryRendererTest::levelsStackAndGrowthPushesDown() {
    SummaryRun run;
    run.withOrder();
    run.order.shippingNotes = QStringLiteral("one\rtwo\rthree\rfour");
    run.box(QStringLiteral("Shipping Notes"), 0, 0, 5000, 600, 1);
    // Beside the notes on the same level: starts with them.
    run.box(QStringLiteral("Total List$"), 6000, 0, 4000, 260, 1);
    // Wholly below the notes on their level (0 counts as 1): 300 twips below what they reached.
    run.box(QStringLiteral("Total Deal$"), 6000, 700, 4000, 260, 0);
    // Further down on a higher level: moved as far as the boxes above it were.
    run.box(QStringLiteral("Total Cust$"), 0, 2000, 5000, 260, 2);
    // A row further down: both of its boxes move alike, so the row stays level.
    run.box(QStringLiteral("Total Marg$"), 0, 2400, 5000, 260, 3);
    run.box(QStringLiteral("Total Volume"), 6000, 2400, 4000, 260, 3);
    run.render();

    const double notesBottom = Margin + 4 * run.lineHeight();
    const double dealTop = notesBottom + 300;
    const double growth = dealTop - (Margin + 700);
    QCOMPARE(run.at(run.order.shippingNotes).y, Margin);
    QCOMPARE(run.at(QStringLiteral("Total Unit List:")).y, Margin);
    QCOMPARE(run.at(QStringLiteral("Total Purchase:")).y, dealTop);
    QCOMPARE(run.at(QStringLiteral("Total Customer:")).y, Margin + 2000 + growth);
    QCOMPARE(run.at(QStringLiteral("Total Margin:")).y, Margin + 2400 + growth);
    QCOMPARE(run.at(QStringLiteral("Total Volume:")).y, Margin + 2400 + growth);
}

void SummaryRendererTest::optionsPrintThreeTexts() {
    SummaryRun run;
    run.layout.other.realONNWidth = 1500;
    const int item = run.spec.appendItem();
    run.spec.item(item).setText(ItemText::PartNumber, QStringLiteral("DESK"));
    run.spec.item(item).setText(ItemText::OptionCodes, QStringLiteral("FIN\rBAS"));
    run.spec.item(item).setText(ItemText::OptionDescriptions, QStringLiteral("Walnut\rSteel"));
    const int other = run.spec.appendItem();
    run.spec.item(other).setText(ItemText::PartNumber, QStringLiteral("CHAIR"));
    run.spec.item(other).setText(ItemText::OptionCodes, QStringLiteral("FIN"));
    run.spec.item(other).setText(ItemText::OptionDescriptions, QStringLiteral("Walnut"));
    run.box(QStringLiteral("Total Option / Description"), 500, 0, 9000, 260);
    run.render();

    const QString label = QStringLiteral("Options / Descriptions:");
    const double labelLeft = Margin + 500 + 30;
    const double codeLeft = labelLeft + run.width(label) + 300;
    QCOMPARE(run.at(label).x, labelLeft);
    // Sorted, each code once, each on the line of its description.
    QCOMPARE(run.at(QStringLiteral("BAS")).x, codeLeft);
    QCOMPARE(run.at(QStringLiteral("BAS")).y, Margin);
    QCOMPARE(run.at(QStringLiteral("Steel")).x, codeLeft + 1500);
    QCOMPARE(run.at(QStringLiteral("FIN")).y, Margin + run.lineHeight());
    QCOMPARE(run.at(QStringLiteral("Walnut")).y, Margin + run.lineHeight());
    int walnuts = 0;
    for (const TextItem &text : run.texts(1))
        walnuts += text.text == QLatin1String("Walnut");
    QCOMPARE(walnuts, 1);
}

void SummaryRendererTest::pageBreakRepeatsBands() {
    SummaryRun run;
    run.box(QStringLiteral("Company Name"), 0, 0, 6000, 300, 1, Container::header());
    run.box(QStringLiteral("Page n of  m"), 6000, 0, 4000, 300, 1, Container::footer());
    const QStringList captions = {QStringLiteral("Total List$"), QStringLiteral("Total Cust$"),
                                  QStringLiteral("Total Deal$"), QStringLiteral("Total Marg$")};
    for (int i = 0; i < captions.size(); ++i)
        run.box(captions[i], 0, i * 5000, 5000, 260, qint16(i + 1));
    run.render();

    // Body from 1020 (under the header band) to 15120 - 300 (above the footer band): the box
    // designed at 15000 starts a second page at the body top.
    QCOMPARE(run.renderer->pageCount(), 2);
    QCOMPARE(run.engine.PageCount(), 2);
    const double bodyTop = Margin + 300;
    QCOMPARE(run.at(QStringLiteral("Total Margin:"), 2).y, bodyTop);
    QVERIFY(run.find(QStringLiteral("Harbor Point Office Interiors"), 1));
    QVERIFY(run.find(QStringLiteral("Harbor Point Office Interiors"), 2));
    QVERIFY(run.find(QStringLiteral("Page 1 of  2"), 1));
    QVERIFY(run.find(QStringLiteral("Page 2 of  2"), 2));
    QCOMPARE(run.at(QStringLiteral("Page 2 of  2"), 2).y, 15840 - Margin - 300);
}

void SummaryRendererTest::pageNumbersRunAcrossSections() {
    SummaryRun run;
    run.box(QStringLiteral("Page n of  m"), 0, 0, 4000, 300, 1, Container::footer());
    run.box(QStringLiteral("Total List$"), 0, 0, 5000, 260);
    const QString summaryPath = run.dir.filePath(QStringLiteral("numbers.sum"));
    TemplateWriter::write(summaryPath, run.layout, QString());
    TemplateLayout cover;
    BoxInfo &page = cover.box(1);
    page = run.layout.box(1);
    const QString coverPath = run.dir.filePath(QStringLiteral("numbers.cov"));
    TemplateWriter::write(coverPath, cover, QString());

    CoverRenderer coverRenderer(TemplateReader::load(coverPath, run.prompter), run.data);
    QStringList log;
    TestSection body(QStringLiteral("body"), 5, {}, &log);
    SummaryRenderer summary(TemplateReader::load(summaryPath, run.prompter), run.data);
    run.job.coverPrintable = run.job.bodyPrintable = run.job.summaryPrintable = true;
    OutputHelpers out(run.engine, run.job);
    PrintDocument(out, run.job, run.settings, {&coverRenderer, &body, &summary});

    QCOMPARE(run.engine.PageCount(), 7);
    QVERIFY(run.find(QStringLiteral("Page 1 of  7"), 1));
    QVERIFY(!run.find(QStringLiteral("Page 2 of  7"), 2));
    QVERIFY(run.find(QStringLiteral("Page 7 of  7"), 7));
    QVERIFY(run.find(QStringLiteral("$0.00"), 7));
}

void SummaryRendererTest::demoPagesLookAsReviewed_data() {
    QTest::addColumn<bool>("cover");
    QTest::newRow("cover") << true;
    QTest::newRow("summary") << false;
}

void SummaryRendererTest::demoPagesLookAsReviewed() {
    QFETCH(bool, cover);
    SummaryRun run;
    const QString demo = testsupport::sourcePath(QStringLiteral("examples/demo"));
    readSif(demo + QStringLiteral("/demo.sif"), QStringLiteral("Harbor Point Offices.sp4"),
            run.spec);
    loadOrderFile(demo + QStringLiteral("/Harbor Point Offices.cif"), run.order, run.prompter);
    run.data.cifPresent = run.order.present;
    run.data.activeDocument = demo + QStringLiteral("/Harbor Point Offices.sp4");
    // Fixed dates, so that the pages do not change from day to day.
    run.data.reportTime = QDateTime(QDate(2026, 11, 2), QTime(9, 30));
    run.data.savedTime = QDateTime(QDate(2026, 10, 30), QTime(16, 5));
    run.settings.marginLeft = run.settings.marginRight = 500;
    run.settings.marginTop = run.settings.marginBottom = 500;

    const QString templates = testsupport::sourcePath(QStringLiteral("resources/Print Templates/"));
    std::unique_ptr<SectionRenderer> section;
    if (cover)
        section = std::make_unique<CoverRenderer>(
            TemplateReader::load(templates + QStringLiteral("Classic.cov"), run.prompter),
            run.data);
    else
        section = std::make_unique<SummaryRenderer>(
            TemplateReader::load(templates + QStringLiteral("Classic Customer.sum"), run.prompter),
            run.data);
    OutputHelpers out(run.engine, run.job);
    printSectionOnly(out, run.job, run.settings, *section, true);
    reportDiagnostics(run.prompter, section->diagnostics());
    QCOMPARE(run.prompter.messages(), QStringList());

    const QImage image = renderPageImage(run.engine, 1, 50);
    const QString name =
        cover ? QStringLiteral("demo-cover.png") : QStringLiteral("demo-summary.png");
    const QString golden = testsupport::dataPath(QStringLiteral("render/sumcov/") + name);
    compareWithGoldenImage(image, golden);
}

TAVREL_TEST(SummaryRendererTest)
#include "SummaryRendererTest.moc"
