#include "spec/SifReader.h"
#include "base/Conversions.h"
#include "base/ErrorReport.h"
#include "base/RuntimeError.h"
#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "spec/SpecJson.h"

#include <QDir>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <cstring>

#include <optional>

using namespace tavrel;

namespace {

// Reads SIF bytes through a real file, as start-up does; returns the error number, if any.
std::optional<int> readText(const QByteArray &sif, SpecData &data,
                            const QString &specFileName = QStringLiteral("Job.sp4")) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("spec.sif"));
    testsupport::writeBytes(path, sif);
    try {
        readSif(path, specFileName, data);
        return std::nullopt;
    } catch (const RuntimeError &error) {
        return error.number();
    }
}

// One item field by its JSON key (the SIF tag without "=", or the computed field's code).
QVariant field(const SpecData &data, int index, const QString &key) {
    return SpecJson::item(data.item(index)).value(key).toVariant();
}

} // namespace

class SifReaderTest : public QObject {
    Q_OBJECT

private slots:
    void itemFields_data();
    void itemFields();
    void itemCount_data();
    void itemCount();
    void failures_data();
    void failures();
    void header();
    void numbersAsTheGeneralConversion();
    void missingFileIsReportedAsLoadSif();
    void realWorldFiles();
    void realWorldFileAsUtf8WithLineFeeds();
};

void SifReaderTest::itemFields_data() {
    QTest::addColumn<QByteArray>("sif");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("expected");

    const auto text = [](const char *name, const QByteArray &sif, int index, const char *key,
                         const QString &expected) {
        QTest::newRow(name) << sif << index << QString::fromLatin1(key) << QVariant(expected);
    };
    const auto number = [](const char *name, const QByteArray &sif, int index, const char *key,
                           double expected) {
        QTest::newRow(name) << sif << index << QString::fromLatin1(key) << QVariant(expected);
    };
    // Tags are split by position and compared exactly; values are trimmed of blanks only.
    text("value trimmed", "PN=a\r\nPD=  two  words \r\n", 1, "PD", QStringLiteral("two  words"));
    text("tab kept", "PN=a\r\nPD=\tx\r\n", 1, "PD", QStringLiteral("\tx"));
    text("equals in value", "PN=a\nTG=visitas=0\n", 1, "T1", QStringLiteral("visitas=0"));
    text("blank before equals is no tag", "PN=a\nPD =x\n", 1, "PD", QString());
    text("lower-case tag ignored", "PN=a\npd=x\n", 1, "PD", QString());
    text("later line wins", "PN=a\nPD=x\nPD=y\n", 1, "PD", QStringLiteral("y"));
    text("part number upper-cased", "PN=ab-c\xe9\xdf\n", 1, "PN",
         QStringLiteral("AB-C\u00c9\u00df"));
    text("lines go to latest item", "PN=a\nPN=b\nPD=x\n", 2, "PD", QStringLiteral("x"));
    text("TG fills tag 1", "PN=a\nTG=t\n", 1, "T1", QStringLiteral("t"));
    text("GC fills tag 2", "PN=a\nGC=g\n", 1, "T2", QStringLiteral("g"));
    text("CG fills generic code", "PN=a\nCG=c\nGC=g\n", 1, "CG", QStringLiteral("c"));
    text("unknown tags ignored", "PN=a\nZO=1\n3D=\nPD=x\n", 1, "PD", QStringLiteral("x"));
    text("short line ignored", "PN=a\nPN\nPD=x\n", 1, "PD", QStringLiteral("x"));
    text("NUL kept", QByteArray("PN=a\nPD=x\0y\n", 12), 1, "PD",
         QStringLiteral("x") + QChar(0) + QStringLiteral("y"));
    text("Windows-1252 decoded", "PN=a\nPD=\x80\x81\xe9\n", 1, "PD",
         QStringLiteral("\u20ac\u0081\u00e9"));
    text("no line end at file end", "PN=a\nPD=last", 1, "PD", QStringLiteral("last"));
    text("CR line ends", "PN=a\rPD=x\rQC=y", 1, "QC", QStringLiteral("y"));
    text("line longer than 64 KB", "PN=a\nPD=" + QByteArray(70000, 'x') + "\nQC=c\n", 1, "QC",
         QStringLiteral("c"));
    // Numbers: a value that is not a number is 0.
    number("quantity empty", "PN=a\nQT=\n", 1, "QT", 0);
    number("quantity text", "PN=a\nQT=ea\n", 1, "QT", 0);
    number("thousands comma", "PN=a\nPL=1,234.50\n", 1, "PL", 1234.5);
    number("lone minus", "PN=a\nPL=-\n", 1, "PL", 0);
    number("nan", "PN=a\nPL=nan\n", 1, "PL", 0);
    number("blanks around number", "PN=a\nQT=  3 \n", 1, "QT", 3);
    // Extensions after reading.
    number("extended list", "PN=a\nQT=3\nPL=2.5\n", 1, "PLE", 7.5);
    number("extended sell", "PN=a\nQT=3\nSP=2\n", 1, "SPE", 6);
    number("extended sell copy", "PN=a\nQT=3\nSP=2\n", 1, "SPE2", 6);
    number("extended buy", "PN=a\nQT=3\nBP=1.5\n", 1, "BPE", 4.5);
    number("extended weight", "PN=a\nQT=3\nWT=4\n", 1, "WTE", 12);
    number("extended volume", "PN=a\nQT=3\nVO=5\n", 1, "VOE", 15);
    number("extended DD", "PN=a\nQT=3\nDD=7\n", 1, "DDE", 21);
    number("part number only", "PN=a\n", 1, "PLE", 0);
    number("subtotal keeps own values", "PN=a\nPN=subtotal\nQT=2\nPL=5\nSP=9\n", 2, "PLE", 0);
    // Margins, computed when the line is read.
    number("margin amount given", "PN=a\nSP=10\nMP=4\n", 1, "MP", 4);
    number("margin amount computed", "PN=a\nSP=10\nBP=6\nMP=\n", 1, "MP", 4);
    number("margin before sell price", "PN=a\nBP=3\nMP=x\nSP=10\n", 1, "MP", -3);
    number("margin percent given", "PN=a\nM%=12.5\n", 1, "M%", 12.5);
    number("margin percent computed", "PN=a\nSP=10\nBP=6\nMP=\nM%=\n", 1, "M%", 40);
    number("margin percent without sell price", "PN=a\nBP=2\nMP=\nM%=\n", 1, "M%", -200);
    number("margin percent without margin line", "PN=a\nSP=10\nBP=6\nM%=\n", 1, "M%", 0);
    // Option and note lists.
    text("options joined", "PN=a\nON=A\nON=B\n", 1, "ON", QStringLiteral("A\rB"));
    text("options running", "PN=a\nON=A\nON=B\n", 1, "ONN", QStringLiteral("A B"));
    text("empty option takes a blank", "PN=a\nON=A\nON=\n", 1, "ON", QStringLiteral("A\r "));
    text("first empty option is a blank", "PN=a\nON=\nON=B\n", 1, "ON", QStringLiteral(" \rB"));
    text("descriptions joined", "PN=a\nOD=x\nOD=y\n", 1, "ODN", QStringLiteral("x y"));
    text("option RTF from later lines", "PN=a\nON=A\nOD=x\nON=B\nOD=y\n", 1, "OptionRtf",
         QStringLiteral(" \\line B \\line y"));
    text("option HTML from later lines", "PN=a\nON=A\nOD=x\nON=B\nOD=y\n", 1, "OptionHtml",
         QStringLiteral(" <BR> B <BR> y"));
    text("option HTML in the file's order", "PN=a\nON=A\nON=B\nON=C\nOD=x\nOD=y\n", 1, "OptionHtml",
         QStringLiteral(" <BR> B <BR> C <BR> y"));
    text("option HTML of uneven lists", "PN=a\nON=A\nOD=x\nON=B\nON=C\n", 1, "OptionHtml",
         QStringLiteral(" <BR> B <BR> C"));
    text("option HTML starting with descriptions", "PN=a\nOD=x\nON=A\nOD=y\nON=B\n", 1, "OptionRtf",
         QStringLiteral(" \\line y \\line B"));
    // A subtotal row receives its group's option lists, but keeps the texts it read itself.
    const QByteArray grouped = "PN=a\nON=A\nON=B\nOD=x\nPN=SUBTOTAL\nON=S\nPN=c\n";
    text("subtotal receives its group's options", grouped, 2, "ON", QStringLiteral("A\rB"));
    text("subtotal keeps its running options", grouped, 2, "ONN", QStringLiteral("S"));
    text("subtotal keeps its own option HTML", grouped, 2, "OptionHtml", QString());
    text("note codes", "PN=a\nAN=N1\nAN=N2\n", 1, "AN", QStringLiteral("[=Notes:=]\rN1\rN2"));
    text("note codes running", "PN=a\nAN=N1\nAN=N2\n", 1, "ANN",
         QStringLiteral("[=Notes:=]\rN1 N2"));
    text("note codes HTML", "PN=a\nAN=N1\nAN=N2\n", 1, "NoteCodeHtml",
         QStringLiteral("[=Notes:=] <BR> N1 <BR> N2"));
    text("note codes RTF", "PN=a\nAN=N1\nAN=\n", 1, "NoteCodeRtf",
         QStringLiteral("[=Notes:=] \\line N1 \\line  "));
    text("note texts", "PN=a\nAD=t1\n", 1, "AD",
         QStringLiteral("= = = = = = = = = [Notes:] = = = = = = = = =\rt1"));
    text("note texts HTML", "PN=a\nAD=t1\nAD=t2\n", 1, "NoteTextHtml",
         QStringLiteral("= = = = = = = = = [Notes:] = = = = = = = = = <BR> t1 <BR> t2"));
    text("note texts RTF", "PN=a\nAD=t1\n", 1, "NoteTextRtf",
         QStringLiteral("= = = = = = = = = [Notes:] = = = = = = = = = \\line t1"));
    text("lists per item", "PN=a\nON=A\nPN=b\nON=B\n", 2, "ON", QStringLiteral("B"));
}

void SifReaderTest::itemFields() {
    QFETCH(QByteArray, sif);
    QFETCH(int, index);
    QFETCH(QString, key);
    QFETCH(QVariant, expected);
    SpecData data;
    QCOMPARE(readText(sif, data), std::nullopt);
    QCOMPARE(field(data, index, key), expected);
}

void SifReaderTest::itemCount_data() {
    QTest::addColumn<QByteArray>("sif");
    QTest::addColumn<int>("count");
    QTest::addColumn<QList<bool>>("subtotal");

    QTest::newRow("empty file") << QByteArray() << 0 << QList<bool>{};
    QTest::newRow("header lines only") << QByteArray("SF=x\nST=y\nTL=5\n") << 0 << QList<bool>{};
    QTest::newRow("lower-case part number tag")
        << QByteArray("SF=\npn=SUBTOTAL\n") << 0 << QList<bool>{};
    QTest::newRow("subtotal in any case")
        << QByteArray("PN=a\nPN=SubTotal\n") << 2 << QList<bool>{false, true};
    QTest::newRow("empty part number starts an item")
        << QByteArray("PN=\nPN=\n") << 2 << QList<bool>{false, false};
    QTest::newRow("subtotal with blanks")
        << QByteArray("PN=  subtotal \n") << 1 << QList<bool>{true};
}

void SifReaderTest::itemCount() {
    QFETCH(QByteArray, sif);
    QFETCH(int, count);
    QFETCH(QList<bool>, subtotal);
    SpecData data;
    QCOMPARE(readText(sif, data), std::nullopt);
    QCOMPARE(data.itemCount(), count);
    for (int i = 1; i <= count; ++i)
        QCOMPARE(data.item(i).isSubtotal(), subtotal[i - 1]);
    QVERIFY_THROWS_EXCEPTION(RuntimeError, data.item(0));
    QVERIFY_THROWS_EXCEPTION(RuntimeError, data.item(count + 1));
}

void SifReaderTest::failures_data() {
    QTest::addColumn<QByteArray>("sif");
    QTest::addColumn<int>("error");
    QTest::addColumn<int>("count");

    QTest::newRow("item line before first item") << QByteArray("SF=\nPD=x\nPN=a\n") << 9 << 0;
    QTest::newRow("overflowing quantity")
        << QByteArray("PN=a\nQT=2\nPL=3\nPN=b\nQT=1e400\nPN=c\n") << 6 << 2;
    QTest::newRow("overflowing header total")
        << QByteArray("PN=a\nQT=2\nPL=3\nTL=-1e400\n") << 6 << 1;
    QTest::newRow("overflowing margin")
        << QByteArray("PN=a\nQT=2\nPL=3\nSP=1e308\nBP=-1e308\nMP=\n") << 6 << 1;
    QTest::newRow("overflowing extension") << QByteArray("PN=a\nQT=2\nPL=1e308\n") << 6 << 1;
}

void SifReaderTest::failures() {
    QFETCH(QByteArray, sif);
    QFETCH(int, error);
    QFETCH(int, count);
    SpecData data;
    QCOMPARE(readText(sif, data), std::optional<int>(error));
    QCOMPARE(data.itemCount(), count);
    // What was read stays; the extensions are not computed.
    if (count > 0) {
        QCOMPARE(data.item(1).partNumber(), QStringLiteral("A"));
        QCOMPARE(data.item(1).quantity, 2.0);
        QCOMPARE(data.item(1).extendedList, 0.0);
    }
}

void SifReaderTest::header() {
    SpecData data;
    const QByteArray sif = "SF=ignored.sif\r\nST=Project\r\nDT=03-15-2024\r\nTM=10:11:12\r\n"
                           "TL=1,000\r\nTS=600\r\nTP=450\r\nTW=12.5\r\nTV=3\r\nPN=a\r\nTS=800\r\n";
    QCOMPARE(readText(sif, data, QStringLiteral("Office.sp4")), std::nullopt);
    const SifHeader &header = data.header;
    QCOMPARE(header.specFileName, QStringLiteral("Office.sp4"));
    QCOMPARE(header.stText, QStringLiteral("Project"));
    QCOMPARE(header.dateText, QStringLiteral("03-15-2024"));
    QCOMPARE(header.timeText, QStringLiteral("10:11:12"));
    QCOMPARE(header.totalList, 1000.0);
    QCOMPARE(header.totalSell, 800.0); // header lines may stand anywhere; the last one wins
    QCOMPARE(header.totalPurchase, 450.0);
    QCOMPARE(header.totalWeight, 12.5);
    QCOMPARE(header.totalVolume, 3.0);
}

void SifReaderTest::numbersAsTheGeneralConversion() {
    // Every number the reader converts equals, bit for bit, what the program's one number
    // conversion gives for the same text.
    QRandomGenerator random(11);
    QStringList texts{QStringLiteral("0.1"),
                      QStringLiteral("614.00"),
                      QStringLiteral("-3"),
                      QStringLiteral("-0"),
                      QStringLiteral(".5"),
                      QStringLiteral("5."),
                      QStringLiteral("123456789012345"),
                      QStringLiteral("1234567890123456"),
                      QStringLiteral("0.000000000000001"),
                      QStringLiteral("9007199254740993"),
                      QStringLiteral("1.5e3"),
                      QStringLiteral("$12"),
                      QStringLiteral("1,234.5")};
    for (int i = 0; i < 3000; ++i) {
        const int decimals = int(random.bounded(8));
        const double value =
            random.generateDouble() * std::pow(10.0, random.bounded(12)) - (i % 3 == 0 ? 1e3 : 0);
        texts << QString::number(value, 'f', decimals);
    }
    QByteArray sif;
    for (const QString &text : std::as_const(texts))
        sif += "PN=x\nPL=" + text.toLatin1() + "\n";
    SpecData data;
    QCOMPARE(readText(sif, data), std::nullopt);
    QCOMPARE(data.itemCount(), int(texts.size()));
    for (int i = 1; i <= data.itemCount(); ++i) {
        const double expected = Conversions::numberOrZero(texts[i - 1]);
        const double actual = data.item(i).listPrice;
        QVERIFY2(std::memcmp(&expected, &actual, sizeof actual) == 0, qPrintable(texts[i - 1]));
    }
}

void SifReaderTest::missingFileIsReportedAsLoadSif() {
    SpecData data;
    ScriptedPrompter prompter;
    QVERIFY(!loadSif(QDir::temp().filePath(QStringLiteral("no-such-tavrel.sif")),
                     QStringLiteral("x"), data, prompter));
    QCOMPARE(prompter.calls().size(), 1);
    const ScriptedPrompter::Call &call = prompter.calls().first();
    QCOMPARE(call.title, errorReportTitle());
    QCOMPARE(call.icon, MessageIcon::Exclamation);
    const QString message = testsupport::compareWithGolden(
        call.text.toUtf8(), QStringLiteral("spec/load-sif-missing.txt"));
    QVERIFY2(message.isEmpty(), qPrintable(message));
}

void SifReaderTest::realWorldFiles() {
    const QString folder = testsupport::realWorldSifFolder();
    if (folder.isEmpty())
        QSKIP("no real-world SIF folder");
    const QStringList files = QDir(folder).entryList({QStringLiteral("*.sif")}, QDir::Files);
    QVERIFY(!files.isEmpty());
    for (const QString &name : files) {
        const QString path = QDir(folder).filePath(name);
        SpecData data;
        ScriptedPrompter prompter;
        QVERIFY2(loadSif(path, name, data, prompter), qPrintable(name));
        QVERIFY2(prompter.calls().isEmpty(), qPrintable(name));

        // Compare with a plain reading of the file: one item per "PN=" line, its part number,
        // description and quantity as written.
        const QList<QByteArray> lines = testsupport::readBytes(path).split('\n');
        int index = 0;
        for (QByteArray line : lines) {
            line = line.trimmed();
            if (line.startsWith("PN=")) {
                ++index;
                QCOMPARE(data.item(index).partNumber(), QString::fromLatin1(line.mid(3)).toUpper());
            } else if (line.startsWith("PD=")) {
                QCOMPARE(data.item(index).partDescription(), QString::fromLatin1(line.mid(3)));
            } else if (line.startsWith("QT=")) {
                QCOMPARE(data.item(index).quantity, line.mid(3).toDouble());
            }
        }
        QCOMPARE(data.itemCount(), index);
        for (int i = 1; i <= data.itemCount(); ++i) {
            const SifItem &item = data.item(i);
            QVERIFY(!item.isSubtotal());
            QCOMPARE(item.extendedList, item.quantity * item.listPrice);
            QCOMPARE(item.optionCodes().count(QLatin1Char('\r')),
                     item.optionDescriptions().count(QLatin1Char('\r')));
        }
    }
}

void SifReaderTest::realWorldFileAsUtf8WithLineFeeds() {
    const QString folder = testsupport::realWorldSifFolder();
    if (folder.isEmpty())
        QSKIP("no real-world SIF folder");
    const QString name = QDir(folder).entryList({QStringLiteral("*.sif")}, QDir::Files).value(0);
    QByteArray bytes = testsupport::readBytes(QDir(folder).filePath(name));
    bytes.replace("\r\n", "\n\n"); // blank lines between entries, as other writers produce
    bytes.replace("PD=Airy", "PD=Caf\xc3\xa9 Airy");
    SpecData data;
    QCOMPARE(readText(bytes, data), std::nullopt);
    QCOMPARE(data.itemCount(), 126);
    QVERIFY(data.item(1).partDescription().startsWith(QStringLiteral("Caf\u00c3\u00a9 Airy")));
}

TAVREL_TEST(SifReaderTest)
#include "SifReaderTest.moc"
