#include "spec/FieldLengths.h"
#include "base/RuntimeError.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"

#include <QFileInfo>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

class FieldLengthsTest : public QObject {
    Q_OBJECT

private slots:
    void builtInLengths_data();
    void builtInLengths();
    void everyCodeOnce();
};

void FieldLengthsTest::builtInLengths_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("length");
    const std::pair<const char *, int> rows[] = {
        {"PN", 16}, {"EC", 3},  {"ED", 60},  {"T3", 24}, {"S-", 9},   {"P%", 9},   {"ON", 49},
        {"CG", 8},  {"REC", 5}, {"ANN", 16}, {"ST", 58}, {"SDT", 17}, {"COM", 30}, {"FP", 58},
        {"AX", 29}, {"OT", 50}, {"RSD", 32}, {"D6", 4},  {"DPH", 20}, {"SPC", 36}, {"VX", 32},
    };
    for (const auto &[code, length] : rows)
        QTest::newRow(code) << QString::fromLatin1(code) << length;
    QTest::newRow("unknown") << QStringLiteral("ZZ") << 0;
}

void FieldLengthsTest::builtInLengths() {
    QFETCH(QString, code);
    QFETCH(int, length);
    QCOMPARE(FieldLengths::builtIn().length(code), length);
    QCOMPARE(FieldLengths::builtInLength(code), length);
    QCOMPARE(FieldLengths::builtIn().label(code), QString());
}

void FieldLengthsTest::everyCodeOnce() {
    const QStringList &codes = FieldLengths::codes();
    QCOMPARE(codes.size(), 46 + 13 + 36); // item, page and header, order header codes
    QCOMPARE(QSet<QString>(codes.cbegin(), codes.cend()).size(), codes.size());
    QCOMPARE(codes.first(), QStringLiteral("PN"));
    QVERIFY(codes.contains(QStringLiteral("OT")));
}

TAVREL_TEST(FieldLengthsTest)
#include "FieldLengthsTest.moc"
