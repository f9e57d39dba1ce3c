#include "spec/Totals.h"
#include "common/TestRegistry.h"
#include "spec/SifReader.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <set>

using namespace tavrel;

namespace {

SpecData parsed(const QByteArray &sif) {
    SpecData data;
    parseSifText(sif, QString(), data);
    Totals::computeAll(data);
    return data;
}

} // namespace

class TotalsTest : public QObject {
    Q_OBJECT

private slots:
    void subtotalOptions_data();
    void subtotalOptions();
    void duplicateCodeKeepsOneDescription();
    void cleanLargeGroup();
    void headerTotals_data();
    void headerTotals();
    void discountPercentagesKeepEarlierValues();
};

void TotalsTest::subtotalOptions_data() {
    QTest::addColumn<QByteArray>("sif");
    // Option codes and descriptions of every "SUBTOTAL" row, in file order.
    QTest::addColumn<QStringList>("codes");
    QTest::addColumn<QStringList>("descriptions");

    QTest::newRow("two groups sorted and de-duplicated")
        << QByteArray("PN=A\nON=B2\nOD=b\nON=A1\nOD=a\nPN=B\nON=B2\nOD=b\nPN=SUBTOTAL\nON=own\n"
                      "PN=C\nON=C1\nOD=c\nPN=SUBTOTAL\n")
        << QStringList{QStringLiteral("A1\rB2"), QStringLiteral("C1")}
        << QStringList{QStringLiteral("a\rb"), QStringLiteral("c")};
    QTest::newRow("lone subtotal at the end keeps its own lines")
        << QByteArray("PN=A\nON=X\nPN=SUBTOTAL\nON=own\nOD=mine\n")
        << QStringList{QStringLiteral("own")} << QStringList{QStringLiteral("mine")};
    QTest::newRow("item without options leaves a blank entry")
        << QByteArray("PN=A\nON=A1\nOD=a\nPN=B\nPN=SUBTOTAL\nPN=C\n")
        << QStringList{QStringLiteral(" \rA1")} << QStringList{QStringLiteral(" \ra")};
    QTest::newRow("first item without options adds nothing")
        << QByteArray("PN=A\nPN=B\nON=A1\nOD=a\nPN=SUBTOTAL\nPN=C\n")
        << QStringList{QStringLiteral("A1")} << QStringList{QStringLiteral("a")};
    // Codes without descriptions get blank descriptions, so every code keeps its partner.
    QTest::newRow("items after the last subtotal are not collected")
        << QByteArray("PN=A\nON=A1\nPN=SUBTOTAL\nPN=B\nON=B1\n")
        << QStringList{QStringLiteral("A1")} << QStringList{QStringLiteral(" ")};
    QTest::newRow("empty groups overwrite the rows' own lines")
        << QByteArray("PN=SUBTOTAL\nON=x\nPN=SUBTOTAL\nON=y\n") << QStringList{QString(), QString()}
        << QStringList{QString(), QString()};
    QTest::newRow("codes compare case-sensitively")
        << QByteArray("PN=A\nON=a1\nON=A1\nON=a1\nPN=SUBTOTAL\nPN=B\n")
        << QStringList{QStringLiteral("A1\ra1")} << QStringList{QStringLiteral(" \r ")};
    QTest::newRow("subtotal rows do not contribute")
        << QByteArray("PN=A\nON=A1\nPN=SUBTOTAL\nON=S1\nPN=B\nON=B1\nPN=SUBTOTAL\n")
        << QStringList{QStringLiteral("A1"), QStringLiteral("B1")}
        << QStringList{QStringLiteral(" "), QStringLiteral(" ")};
    QTest::newRow("more codes than descriptions")
        << QByteArray("PN=A\nON=B\nON=A\nOD=b\nPN=SUBTOTAL\nPN=C\n")
        << QStringList{QStringLiteral("A\rB")} << QStringList{QStringLiteral(" \rb")};
    QTest::newRow("blank entries become one blank")
        << QByteArray("PN=A\nON=  \nOD=\nON=Z\nOD=z\nPN=SUBTOTAL\nPN=C\n")
        << QStringList{QStringLiteral(" \rZ")} << QStringList{QStringLiteral(" \rz")};
}

void TotalsTest::subtotalOptions() {
    QFETCH(QByteArray, sif);
    QFETCH(QStringList, codes);
    QFETCH(QStringList, descriptions);
    const SpecData data = parsed(sif);
    QStringList actualCodes;
    QStringList actualDescriptions;
    for (int i = 1; i <= data.itemCount(); ++i) {
        if (data.item(i).isSubtotal()) {
            actualCodes << data.item(i).optionCodes();
            actualDescriptions << data.item(i).optionDescriptions();
        }
    }
    QCOMPARE(actualCodes, codes);
    QCOMPARE(actualDescriptions, descriptions);
}

void TotalsTest::duplicateCodeKeepsOneDescription() {
    // Which description of a repeated code survives is not settled; one of them does.
    QString codes = QStringLiteral("B2\rA1\rB2");
    QString descriptions = QStringLiteral("first\ra\rsecond");
    Totals::cleanOptionGroup(codes, descriptions);
    QCOMPARE(codes, QStringLiteral("A1\rB2"));
    const QStringList kept = descriptions.split(QLatin1Char('\r'));
    QCOMPARE(kept.size(), 2);
    QCOMPARE(kept[0], QStringLiteral("a"));
    QVERIFY(kept[1] == QStringLiteral("first") || kept[1] == QStringLiteral("second"));
}

void TotalsTest::cleanLargeGroup() {
    // Sorted input, reversed input and random input with many repeats all come out sorted and
    // unique, each code still with its own description.
    QRandomGenerator random(7);
    QList<QStringList> inputs;
    QStringList sorted;
    QStringList repeated;
    for (int i = 0; i < 5000; ++i) {
        sorted << QStringLiteral("C%1").arg(i, 5, 10, QLatin1Char('0'));
        repeated << QStringLiteral("R%1").arg(random.bounded(300));
    }
    QStringList reversed = sorted;
    std::reverse(reversed.begin(), reversed.end());
    inputs << sorted << reversed << repeated << QStringList(2000, QStringLiteral("same"));
    for (const QStringList &input : std::as_const(inputs)) {
        QString codes = input.join(QLatin1Char('\r'));
        QStringList descriptionList;
        for (const QString &code : input)
            descriptionList << code.toLower();
        QString descriptions = descriptionList.join(QLatin1Char('\r'));
        Totals::cleanOptionGroup(codes, descriptions);

        const std::set<QString> unique(input.cbegin(), input.cend());
        const QStringList expected(unique.cbegin(), unique.cend());
        QCOMPARE(codes.split(QLatin1Char('\r')), expected);
        QStringList expectedDescriptions;
        for (const QString &code : expected)
            expectedDescriptions << code.toLower();
        QCOMPARE(descriptions.split(QLatin1Char('\r')), expectedDescriptions);
    }
}

void TotalsTest::headerTotals_data() {
    QTest::addColumn<QByteArray>("sif");
    QTest::addColumn<QList<double>>("expected"); // margin, discount, margin %, cust %, deal %

    QTest::newRow("all supplied") << QByteArray("TL=1000\nTS=600\nTP=450\n")
                                  << QList<double>{150, 400, 25, 40, 55};
    QTest::newRow("no totals") << QByteArray("PN=a\n") << QList<double>{0, 0, 100, 0, 0};
    QTest::newRow("sell total zero")
        << QByteArray("TL=100\nTS=0\nTP=80\n") << QList<double>{-80, 100, 100, 100, 20};
    QTest::newRow("sell total negative")
        << QByteArray("TL=100\nTS=-5\nTP=80\n") << QList<double>{-85, 105, 100, 105, 20};
    QTest::newRow("list total zero")
        << QByteArray("TS=200\nTP=150\n") << QList<double>{50, -200, 25, 0, 0};
    QTest::newRow("list total negative")
        << QByteArray("TL=-10\nTS=200\nTP=150\n") << QList<double>{50, -210, 25, 0, 0};
    QTest::newRow("totals are not item sums")
        << QByteArray("PN=a\nQT=2\nSP=10\nTS=4\nTP=1\n") << QList<double>{3, -4, 75, 0, 0};
}

void TotalsTest::headerTotals() {
    QFETCH(QByteArray, sif);
    QFETCH(QList<double>, expected);
    const SifHeader header = parsed(sif).header;
    const QList<double> actual{header.totalMarginAmount, header.totalDiscountAmount,
                               header.totalMarginPercent, header.totalCustomerDiscountPercent,
                               header.totalDealerDiscountPercent};
    for (qsizetype i = 0; i < expected.size(); ++i)
        QCOMPARE(actual[i], expected[i]);
}

void TotalsTest::discountPercentagesKeepEarlierValues() {
    SifHeader header;
    header.totalCustomerDiscountPercent = 12;
    header.totalDealerDiscountPercent = 34;
    header.totalSell = 10;
    Totals::computeHeaderTotals(header);
    QCOMPARE(header.totalCustomerDiscountPercent, 12.0);
    QCOMPARE(header.totalDealerDiscountPercent, 34.0);
    QCOMPARE(header.totalMarginPercent, 100.0);
}

TAVREL_TEST(TotalsTest)
#include "TotalsTest.moc"
