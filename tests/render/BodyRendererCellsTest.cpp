#include "render/BodyRendererCells.h"
#include "common/TestRegistry.h"
#include "spec/SpecData.h"

#include <QTest>

using namespace tavrel;

namespace {

SifItem sampleItem() {
    SifItem item;
    item.setText(ItemText::PartNumber, QStringLiteral("RD7236L"));
    item.quantity = 3;
    item.listPrice = 1234.5;
    item.extendedList = 3703.5;
    item.sellPrice = 600;
    item.extendedSell = 1800;
    item.buyPrice = 450.125;
    item.customerPercent = 51.4;
    item.dealerPercent = -2;
    item.marginPercent = 25;
    item.marginAmount = 150;
    item.weight = 0;
    item.setText(ItemText::Tag1, QStringLiteral("Lobby"));
    item.setText(ItemText::CmText, QStringLiteral("4"));
    return item;
}

} // namespace

class BodyRendererCellsTest : public QObject {
    Q_OBJECT

private slots:
    void cellTexts_data();
    void cellTexts();
    void totalTexts_data();
    void totalTexts();
    void columnKinds();
};

void BodyRendererCellsTest::cellTexts_data() {
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("subtotal");
    QTest::newRow("text") << "Part Number"
                          << "RD7236L"
                          << "RD7236L";
    QTest::newRow("tag") << "Tag 1"
                         << "Lobby"
                         << "Lobby";
    QTest::newRow("complete value") << "Complete"
                                    << "4"
                                    << "4";
    QTest::newRow("quantity") << "Qty"
                              << "3" << QString();
    QTest::newRow("unit amount") << "List$"
                                 << "1234.50" << QString();
    QTest::newRow("extended amount") << "EXT List$"
                                     << "3703.50"
                                     << "1234.50";
    QTest::newRow("three decimals round") << "Deal$"
                                          << "450.13" << QString();
    QTest::newRow("zero weight") << "Weight"
                                 << "0.00" << QString();
    QTest::newRow("discount") << "Cust Disc$"
                              << "634.50" << QString();
    QTest::newRow("extended margin") << "EXT MG$"
                                     << "450.00"
                                     << "149.88";
    QTest::newRow("percentage") << "Cust%"
                                << "51.40000" << QString();
    QTest::newRow("negative percentage") << "Deal%"
                                         << "-2.00000" << QString();
    QTest::newRow("margin percentage keeps its blank") << "MG%"
                                                       << "25. 00000" << QString();
    QTest::newRow("no item field") << "Company Name" << QString() << QString();
}

void BodyRendererCellsTest::cellTexts() {
    QFETCH(QString, caption);
    QFETCH(QString, item);
    QFETCH(QString, subtotal);
    QCOMPARE(BodyCellTexts::cellText(caption, sampleItem()), item);
    QCOMPARE(BodyCellTexts::subtotalCellText(caption, sampleItem()), subtotal);
}

void BodyRendererCellsTest::totalTexts_data() {
    QTest::addColumn<QString>("caption");
    QTest::addColumn<double>("value"); // as the header keeps it
    QTest::addColumn<QString>("expected");
    QTest::newRow("list") << "Total List$" << 431048.0 << "$431,048.00";
    QTest::newRow("weight zero") << "Total Weight" << 0.0 << ".00";
    QTest::newRow("positive cust% reads as a reduction") << "Total Cust%" << 20.0 << "-%20.00000";
    QTest::newRow("negative cust% gets a plus") << "Total Cust%" << -20.0 << "+%20.00000";
    QTest::newRow("zero cust% stays") << "Total Cust%" << 0.0 << "%0.00000";
    QTest::newRow("deal% inverted too") << "Total Deal%" << 62.2 << "-%62.20000";
    QTest::newRow("marg% keeps its sign") << "Total Marg%" << 19.35 << "%19.35000";
    QTest::newRow("marg$") << "Total Marg$" << -12.5 << "-$12.50";
    QTest::newRow("not a total") << "Total Option / Description" << 1.0 << QString();
}

void BodyRendererCellsTest::totalTexts() {
    QFETCH(QString, caption);
    QFETCH(double, value);
    QFETCH(QString, expected);
    SifHeader header;
    header.totalList = header.totalWeight = header.totalCustomerDiscountPercent =
        header.totalDealerDiscountPercent = header.totalMarginPercent = header.totalMarginAmount =
            value;
    QCOMPARE(BodyCellTexts::totalText(caption, header), expected);
}

void BodyRendererCellsTest::columnKinds() {
    QCOMPARE(bodyColumnKind(QStringLiteral("Option Code / Description")), BodyColumnKind::Options);
    QCOMPARE(bodyColumnKind(QStringLiteral("Option Note Code / Description")),
             BodyColumnKind::Notes);
    QCOMPARE(bodyColumnKind(QStringLiteral("Complete")), BodyColumnKind::Complete);
    QCOMPARE(bodyColumnKind(QStringLiteral("Part Number")), BodyColumnKind::Text);
    QVERIFY(isSubLineKind(BodyColumnKind::NoteCodes));
    QVERIFY(!isSubLineKind(BodyColumnKind::Image));
    QCOMPARE(listLines(QString()), QStringList());
    QCOMPARE(listLines(QStringLiteral("A\r \rB")), (QStringList{"A", " ", "B"}));
}

TAVREL_TEST(BodyRendererCellsTest)
#include "BodyRendererCellsTest.moc"
