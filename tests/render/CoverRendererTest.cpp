#include "render/CoverRenderer.h"
#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "render/OutputHelpers.h"
#include "render/PageEngine.h"
#include "render/PrintJob.h"
#include "render/ReportData.h"
#include "render/SectionRun.h"
#include "render/TestSection.h"
#include "spec/OrderFileReader.h"
#include "templates/TemplateWriter.h"

#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

namespace {

// A cover run, with the order file read as start-up reads it.
struct CoverRun : SectionRun<CoverRenderer> {
    CoverRun()
        : SectionRun(QStringLiteral(".cov")) {}

    void readOrder(const QStringList &lines) {
        order.present = true;
        data.cifPresent = true;
        readOrderHeaderLines(lines, order);
    }
};

constexpr double Margin = CoverRun::Margin;

} // namespace

class CoverRendererTest : public QObject {
    Q_OBJECT

private slots:
    void orderFieldsLineUp_data();
    void orderFieldsLineUp();
    void noOrderFileKeepsTheLabels();
    void addressWithOnlyLineTwo();
    void contactLists_data();
    void contactLists();
    void numbersStayBesideTheirNames();
    void emptyListKeepsOneLine();
    void longCoverBreaksThePage();
};

void CoverRendererTest::orderFieldsLineUp_data() {
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("value");
    QTest::newRow("short label") << "P. O. Number"
                                 << "CO=HP-26-0419"
                                 << "P. O. Number:"
                                 << "HP-26-0419";
    QTest::newRow("longest label") << "Install Date"
                                   << "RI=20270118"
                                   << "Requested Install Date:"
                                   << "01-18-2027";
    QTest::newRow("date as year, month, day") << "Ship Date"
                                              << "RD=20240315"
                                              << "Requested Ship Date:"
                                              << "03-15-2024";
    QTest::newRow("date with hyphens kept") << "Ship Date"
                                            << "RD=2024-03-15"
                                            << "Requested Ship Date:"
                                            << "2024-03-15";
    QTest::newRow("contract") << "Contract Rev"
                              << "PR=2"
                              << "Contract Rev:"
                              << "2";
}

void CoverRendererTest::orderFieldsLineUp() {
    QFETCH(QString, caption);
    QFETCH(QString, line);
    QFETCH(QString, label);
    QFETCH(QString, value);
    CoverRun run;
    run.readOrder({line});
    run.box(caption, 400, 1000, 6000, 260);
    run.render();

    const auto labelText = run.find(label + QStringLiteral("   "));
    const auto valueText = run.find(value);
    QVERIFY(labelText && valueText);
    const double left = Margin + 400 + 30;
    QCOMPARE(labelText->x, left);
    QCOMPARE(labelText->y, Margin + 1000);
    QCOMPARE(valueText->x,
             left + CoverRun::width(QStringLiteral("Requested Install Date: ")) + 300);
    QCOMPARE(valueText->y, Margin + 1000);
}

void CoverRendererTest::noOrderFileKeepsTheLabels() {
    CoverRun run;
    const QStringList captions = {QStringLiteral("P. O. Number"), QStringLiteral("Ship Date"),
                                  QStringLiteral("Sold Street Address"),
                                  QStringLiteral("Sold Company"), QStringLiteral("Comments")};
    for (int i = 0; i < captions.size(); ++i)
        run.box(captions[i], 0, i * 400, 5000, 260, qint16(i + 1));
    run.render();

    QStringList printed;
    for (const TextItem &text : run.texts())
        printed << text.text;
    QCOMPARE(printed, strings({"P. O. Number:   ", "Requested Ship Date:   "}));
    QCOMPARE(run.renderer->pageCount(), 1);
}

void CoverRendererTest::addressWithOnlyLineTwo() {
    CoverRun run;
    run.readOrder(strings({"D3=400 Wharf Street", "D5=Harbor Point"}));
    run.box(QStringLiteral("Sold Street Address"), 0, 0, 5000, 260);
    run.box(QStringLiteral("Sold City"), 0, 300, 5000, 260);
    run.render();

    const auto address = run.find(QStringLiteral("\r400 Wharf Street"));
    QVERIFY(address);
    // An empty first line, then the street: one printed line under an empty one.
    QCOMPARE(address->lines.size(), std::size_t(2));
    QCOMPARE(address->lines[0].length, 0);
    // The city, next on the level, follows 300 twips below the two lines.
    QCOMPARE(run.at(QStringLiteral("Harbor Point")).y, Margin + 2 * CoverRun::lineHeight() + 300);
}

void CoverRendererTest::contactLists_data() {
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QStringList>("entries");
    const QStringList names = strings({"Marisol Quint", "Owen Halvorsen", "Ines Barrow"});
    QTest::newRow("sales persons") << "Sales Person"
                                   << "Sales: " << names;
    QTest::newRow("sales numbers") << "Sales Number"
                                   << "Number: " << strings({"S-204", "S-311", "S-402"});
    QTest::newRow("dealers") << "Dealer"
                             << "Dealer: " << strings({"Northgate"});
    QTest::newRow("dealer numbers") << "Dealer Number"
                                    << "Number: " << strings({"D-1187"});
}

void CoverRendererTest::contactLists() {
    QFETCH(QString, caption);
    QFETCH(QString, label);
    QFETCH(QStringList, entries);
    CoverRun run;
    run.readOrder(strings({"K1=Marisol Quint", "L1=S-204", "K2=Owen Halvorsen", "L2=S-311",
                           "K3=Ines Barrow", "L3=S-402", "U1=Northgate", "V1=D-1187"}));
    run.box(caption, 200, 500, 5000, 260);
    run.render();

    const double left = Margin + 200 + 30;
    QCOMPARE(run.at(label).x, left);
    QCOMPARE(run.at(label).y, Margin + 500);
    const double entriesLeft = left + CoverRun::width(QStringLiteral("Number: "));
    for (qsizetype i = 0; i < entries.size(); ++i) {
        const auto entry = run.find(entries[i]);
        QVERIFY2(entry, qPrintable(entries[i]));
        QCOMPARE(entry->x, entriesLeft);
        QCOMPARE(entry->y, Margin + 500 + double(i) * CoverRun::lineHeight());
    }
}

void CoverRendererTest::numbersStayBesideTheirNames() {
    CoverRun run;
    run.readOrder(strings({"K1=Marisol Quint of the Harbor Point regional office", "L1=S-204",
                           "K2=Owen Halvorsen", "L2=S-311"}));
    run.box(QStringLiteral("Sales Person"), 0, 0, 3000, 260);
    run.box(QStringLiteral("Sales Number"), 3200, 0, 2000, 260);
    run.render();

    const auto first =
        run.find(QStringLiteral("Marisol Quint of the Harbor Point regional office"));
    QVERIFY(first);
    QVERIFY(first->lines.size() > 1);
    QCOMPARE(run.at(QStringLiteral("S-204")).y, first->y);
    // The second number waits for the wrapped name, level with its own name.
    QCOMPARE(run.at(QStringLiteral("S-311")).y, run.at(QStringLiteral("Owen Halvorsen")).y);
    QCOMPARE(run.at(QStringLiteral("S-311")).y, first->y + first->height);
}

void CoverRendererTest::emptyListKeepsOneLine() {
    CoverRun run;
    run.readOrder(strings({"CO=1"}));
    run.box(QStringLiteral("Dealer"), 0, 0, 5000, 100);
    run.box(QStringLiteral("P. O. Number"), 0, 120, 5000, 260);
    run.render();
    QVERIFY(run.find(QStringLiteral("Dealer: ")));
    // One empty line for the dealers, then the level's 300-twip step.
    QCOMPARE(run.at(QStringLiteral("P. O. Number:   ")).y, Margin + CoverRun::lineHeight() + 300);
}

void CoverRendererTest::longCoverBreaksThePage() {
    CoverRun run;
    QStringList order;
    for (int i = 1; i <= 9; ++i)
        order << QStringLiteral("K%1=Sales person %1").arg(i) << QStringLiteral("L%1=S-%1").arg(i);
    for (int i = 1; i <= 40; ++i)
        order << QStringLiteral("TN=Comment line %1 about the delivery").arg(i);
    run.readOrder(order);
    run.box(QStringLiteral("Company Name"), 0, 0, 6000, 300, 1, Container::header());
    run.data.companyName = QStringLiteral("Harbor Point Office Interiors");
    run.box(QStringLiteral("Page n of  m"), 0, 0, 4000, 300, 1, Container::footer());
    run.box(QStringLiteral("Sales Person"), 0, 3000, 5000, 260, 1);
    run.box(QStringLiteral("Comments"), 0, 4000, 10000, 1440, 2);
    run.box(QStringLiteral("P. O. Number"), 0, 5600, 5000, 260, 3);
    run.render();

    // Nine sales persons push the comments down; forty comment lines do not fit under them and
    // start the second page, where the order field follows.
    QCOMPARE(run.renderer->pageCount(), 2);
    QVERIFY(run.find(QStringLiteral("Sales person 9"), 1));
    const QString comments = run.order.header.comments;
    QVERIFY(!run.find(comments, 1));
    QCOMPARE(run.at(comments, 2).y, Margin + 300);
    QVERIFY(run.find(QStringLiteral("P. O. Number:   "), 2));
    for (int page = 1; page <= 2; ++page) {
        QVERIFY(run.find(QStringLiteral("Harbor Point Office Interiors"), page));
        QVERIFY(run.find(QStringLiteral("Page %1 of  2").arg(page), page));
    }
}

TAVREL_TEST(CoverRendererTest)
#include "CoverRendererTest.moc"
