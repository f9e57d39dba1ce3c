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
    void readFromJobFile_data();
    void readFromJobFile();
    void writeToJobFile();
    void failedWriteLeavesNothing();
    void labelForCode();
    void labelForCaption_data();
    void labelForCaption();
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

void FieldLengthsTest::readFromJobFile_data() {
    QTest::addColumn<QByteArray>("ini");
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("label");

    QTest::newRow("length and label")
        << QByteArray("[Printer]\nPN=12,Part No.\n") << "PN" << 12 << "Part No.";
    QTest::newRow("zero accepted") << QByteArray("[Printer]\nPN=0\n") << "PN" << 0 << "";
    QTest::newRow("empty keeps built-in") << QByteArray("[Printer]\nPN=\n") << "PN" << 16 << "";
    QTest::newRow("missing keeps built-in") << QByteArray("[Printer]\n") << "PN" << 16 << "";
    QTest::newRow("not a number keeps built-in")
        << QByteArray("[Printer]\nPN=abc,Lbl\n") << "PN" << 16 << "Lbl";
    QTest::newRow("beyond 16 bits keeps built-in")
        << QByteArray("[Printer]\nPN=99999,x\n") << "PN" << 16 << "x";
    QTest::newRow("several commas")
        << QByteArray("[Printer]\nPN= 20 , Part , No. \n") << "PN" << 20 << "Part , No.";
    QTest::newRow("other section ignored") << QByteArray("[Other]\nPN=3\n") << "PN" << 16 << "";
    QTest::newRow("order type length from quantity key")
        << QByteArray("[Printer]\nQT=7,Qty\nOT=30,Order\n") << "OT" << 7 << "Order";
    QTest::newRow("order type without quantity key")
        << QByteArray("[Printer]\nOT=30,Order\n") << "OT" << 50 << "Order";
    QTest::newRow("quantity itself") << QByteArray("[Printer]\nQT=7,Qty\n") << "QT" << 7 << "Qty";
}

void FieldLengthsTest::readFromJobFile() {
    QFETCH(QByteArray, ini);
    QFETCH(QString, code);
    QFETCH(int, length);
    QFETCH(QString, label);
    QTemporaryDir dir;
    const QString jobFile = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(jobFile, ini);
    FieldLengths lengths = FieldLengths::builtIn();
    lengths.readFromJobFile(jobFile);
    QCOMPARE(lengths.length(code), length);
    QCOMPARE(lengths.label(code), label);
}

void FieldLengthsTest::writeToJobFile() {
    QTemporaryDir dir;
    const QString jobFile = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(jobFile, "[Printer]\r\nTempPrintDocument=job.sif\r\nPN=5,Old\r\n"
                                     "[User Preferences]\r\nCompany Name=Orvanta\r\n");
    FieldLengths lengths = FieldLengths::builtIn();
    lengths.setLength(QStringLiteral("PN"), 18);
    lengths.setLabel(QStringLiteral("PN"), QStringLiteral("Part No."));
    lengths.setLength(QStringLiteral("OT"), 40);
    lengths.writeToJobFile(jobFile);
    const QString message = testsupport::compareWithGolden(
        testsupport::readBytes(jobFile), QStringLiteral("spec/field-lengths-written.ini"));
    QVERIFY2(message.isEmpty(), qPrintable(message));

    FieldLengths reread = FieldLengths::builtIn();
    reread.readFromJobFile(jobFile);
    QCOMPARE(reread.length(QStringLiteral("PN")), 18);
    QCOMPARE(reread.label(QStringLiteral("PN")), QStringLiteral("Part No."));
    // The order type is written under its own key but read from the quantity key.
    QCOMPARE(reread.length(QStringLiteral("OT")), 5);
}

void FieldLengthsTest::failedWriteLeavesNothing() {
    QTemporaryDir dir;
    const QString jobFile = dir.filePath(QStringLiteral("missing-folder/job.ini"));
    QVERIFY_THROWS_EXCEPTION(RuntimeError, FieldLengths::builtIn().writeToJobFile(jobFile));
    QVERIFY(!QFileInfo::exists(jobFile));
}

void FieldLengthsTest::labelForCode() {
    QTemporaryDir dir;
    const QString jobFile = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(jobFile, "[Printer]\nPN=12, Part No. \nPD=34\n");
    QCOMPARE(fieldLabelForCode(jobFile, QStringLiteral("PN")), QStringLiteral("Part No."));
    QCOMPARE(fieldLabelForCode(jobFile, QStringLiteral("PD")), QString());
    QCOMPARE(fieldLabelForCode(jobFile, QStringLiteral("ED")), QString());
    QCOMPARE(fieldLabelForCode(jobFile, QString()), QString());
}

void FieldLengthsTest::labelForCaption_data() {
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("label");
    QTest::newRow("item caption") << QStringLiteral("Part Number") << QStringLiteral("Part No.");
    QTest::newRow("generic code reads CG")
        << QStringLiteral("Generic Code") << QStringLiteral("Generic");
    QTest::newRow("catalog spelling")
        << QStringLiteral("Table of Contensts") << QStringLiteral("TOC");
    QTest::newRow("correct spelling is no caption")
        << QStringLiteral("Table of Contents") << QString();
    QTest::newRow("total caption has no label") << QStringLiteral("Total Weight") << QString();
    QTest::newRow("value without comma") << QStringLiteral("Part Description") << QString();
}

void FieldLengthsTest::labelForCaption() {
    QFETCH(QString, caption);
    QFETCH(QString, label);
    QTemporaryDir dir;
    const QString jobFile = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(jobFile, "[Printer]\nPN=12,Part No.\nCG=8, Generic\nTC=10,TOC\n"
                                     "GC=5,Wrong\nPD=34\nTW=9,Weight\n");
    QCOMPARE(fieldLabel(jobFile, caption), label);
}

TAVREL_TEST(FieldLengthsTest)
#include "FieldLengthsTest.moc"
