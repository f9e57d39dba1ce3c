#include "base/BasicFormat.h"
#include "common/TestRegistry.h"

#include <QTest>

using namespace tavrel;

class BasicFormatTest : public QObject {
    Q_OBJECT

private slots:
    void format_data();
    void format();
};

void BasicFormatTest::format_data() {
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, double value, const char *pattern, const char *expected) {
        QTest::newRow(name) << value << QString::fromLatin1(pattern)
                            << QString::fromLatin1(expected);
    };
    // Amounts of item rows.
    row("amount zero", 0, "##0.00", "0.00");
    row("amount plain", 1234.5, "##0.00", "1234.50");
    row("amount whole", 5, "##0.00", "5.00");
    row("amount half up", 0.005, "##0.00", "0.01");
    row("amount decimal half 2.675", 2.675, "##0.00", "2.68");
    row("amount decimal half 1.005", 1.005, "##0.00", "1.01");
    row("amount eighth", 0.125, "##0.00", "0.13");
    row("amount negative eighth", -0.125, "##0.00", "-0.13");
    row("amount negative", -1.5, "##0.00", "-1.50");
    row("amount negative rounds to zero", -0.001, "##0.00", "-0.00");
    row("amount carry into thousands", 999.995, "##0.00", "1000.00");
    row("amount more digits than placeholders", 12345678.9, "##0.00", "12345678.90");
    row("amount large", 1e15, "##0.00", "1000000000000000.00");
    row("amount beyond 15 digits", 1e20, "##0.00", "100000000000000000000.00");
    row("amount binary noise", 0.1 + 0.2, "##0.00000", "0.30000");
    // Percentages of item rows.
    row("percent field half", 0.123455, "##0.00000", "0.12346");
    row("percent field plain", 55.8, "##0.00000", "55.80000");
    row("percent field negative", -67, "##0.00000", "-67.00000");
    row("percent field hundred", 100, "##0.00000", "100.00000");
    row("blank after point", 12.5, "##0. 00000", "12. 50000");
    row("blank after point zero", 0, "##0. 00000", "0. 00000");
    row("blank after point negative", -3.333333, "##0. 00000", "-3. 33333");
    // Weight and volume totals: no leading zero.
    row("no leading zero", 0.5, "#.00", ".50");
    row("no leading zero of zero", 0, "#.00", ".00");
    row("no leading zero negative", -0.25, "#.00", "-.25");
    row("no leading zero rounds up to one", 0.999, "#.00", "1.00");
    row("no leading zero tiny", 0.004, "#.00", ".00");
    row("no leading zero large", 1234.567, "#.00", "1234.57");
    // Money totals.
    row("money thousands", 1234.5, "$#,##0.00", "$1,234.50");
    row("money negative sign before dollar", -1234.5, "$#,##0.00", "-$1,234.50");
    row("money zero", 0, "$#,##0.00", "$0.00");
    row("money carry to thousand", 999.999, "$#,##0.00", "$1,000.00");
    row("money millions", 1234567.891, "$#,##0.00", "$1,234,567.89");
    row("money hundred", 100, "$#,##0.00", "$100.00");
    row("money six digits", 123456, "$#,##0.00", "$123,456.00");
    row("money cents", 0.5, "$#,##0.00", "$0.50");
    row("money negative rounds to zero", -0.004, "$#,##0.00", "-$0.00");
    // Additional charge lines: no thousands separator.
    row("charge no grouping", 1234.5, "$##0.00", "$1234.50");
    row("charge plain", 125, "$##0.00", "$125.00");
    row("charge negative half", -7.125, "$##0.00", "-$7.13");
    row("charge zero", 0, "$##0.00", "$0.00");
    // Percentage totals: multiplied by 100, percent sign where the pattern has it.
    row("percent total eighth", 0.125, "%##0.00000", "%12.50000");
    row("percent total negative", -0.125, "%##0.00000", "-%12.50000");
    row("percent total zero", 0, "%##0.00000", "%0.00000");
    row("percent total one", 1, "%##0.00000", "%100.00000");
    row("percent total fraction", 0.558, "%##0.00000", "%55.80000");
    row("percent total thirds", 1.0 / 3.0, "%##0.00000", "%33.33333");
    row("percent total smallest digit", 0.0000001, "%##0.00000", "%0.00001");
    row("percent total half of smallest digit", 0.00000005, "%##0.00000", "%0.00001");
    row("percent total whole hundreds", 12.5, "%##0.00000", "%1250.00000");
    // Percent sign after the digits, and "#" decimals, as BASIC places them.
    row("percent suffix", 0.5, "0.00%", "50.00%");
    row("optional decimals dropped", 2.5, "0.##", "2.5");
}

void BasicFormatTest::format() {
    QFETCH(double, value);
    QFETCH(QString, pattern);
    QFETCH(QString, expected);
    QCOMPARE(basicFormat(value, pattern), expected);
}

TAVREL_TEST(BasicFormatTest)
#include "BasicFormatTest.moc"
