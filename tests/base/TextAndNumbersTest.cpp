#include "base/ContainedLines.h"
#include "base/Conversions.h"
#include "base/ErrorReport.h"
#include "base/RuntimeError.h"
#include "base/ScriptedPrompter.h"
#include "base/TextFile.h"
#include "base/Windows1252.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

using namespace tavrel;

// Windows-1252 text, line splitting, atomic writes, number parsing and the error report text.
class TextAndNumbersTest : public QObject {
    Q_OBJECT

private slots:
    void windows1252RoundTrip();
    void windows1252Mapping_data();
    void windows1252Mapping();
    void splitLines_data();
    void splitLines();
    void readMissingFile();
    void atomicWriteFailuresKeepOldFile();
    void atomicWriteRemovesItsLeftovers();
    void parseNumber_data();
    void parseNumber();
    void overflow_data();
    void overflow();
    void integerConversion_data();
    void integerConversion();
    void errorReportText();
    void containedLinesAgreeWithSearch();
};

void TextAndNumbersTest::windows1252RoundTrip() {
    QByteArray all;
    for (int b = 0; b < 256; ++b)
        all.append(char(b));
    QCOMPARE(toWindows1252(fromWindows1252(all)), all);
}

void TextAndNumbersTest::windows1252Mapping_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("euro") << QByteArray("\x80") << QStringLiteral("\u20ac");
    QTest::newRow("quotes") << QByteArray("\x93Hi\x94") << QStringLiteral("\u201cHi\u201d");
    QTest::newRow("e acute") << QByteArray("Caf\xe9") << QStringLiteral("Caf\u00e9");
    QTest::newRow("undefined 0x81") << QByteArray("\x81") << QStringLiteral("\u0081");
    QTest::newRow("nul") << QByteArray("a\0b", 3)
                         << QString(QStringLiteral("a") + QChar(0) + QStringLiteral("b"));
}

void TextAndNumbersTest::windows1252Mapping() {
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    QCOMPARE(fromWindows1252(bytes), text);
    QCOMPARE(toWindows1252(text), bytes);
    QCOMPARE(toWindows1252(QStringLiteral("\u4e2d")), QByteArray("?"));
}

void TextAndNumbersTest::splitLines_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("crlf") << "a\r\nb\r\n" << QStringList{"a", "b"};
    QTest::newRow("lf") << "a\nb" << QStringList{"a", "b"};
    QTest::newRow("cr") << "a\rb\r" << QStringList{"a", "b"};
    QTest::newRow("blank lines kept") << "a\r\n\r\nb" << QStringList{"a", "", "b"};
    QTest::newRow("empty") << "" << QStringList{};
    QTest::newRow("no end") << "PN=1" << QStringList{"PN=1"};
}

void TextAndNumbersTest::splitLines() {
    QFETCH(QString, text);
    QFETCH(QStringList, lines);
    QCOMPARE(TextFile::splitLines(text), lines);
}

void TextAndNumbersTest::readMissingFile() {
    QTemporaryDir dir;
    try {
        TextFile::readLines(dir.filePath(QStringLiteral("missing.sif")));
        QFAIL("no error");
    } catch (const RuntimeError &error) {
        QCOMPARE(error.number(), 53);
        QCOMPARE(error.description(), QStringLiteral("File not found"));
    }
    try {
        TextFile::readLines(dir.path());
        QFAIL("no error");
    } catch (const RuntimeError &error) {
        QCOMPARE(error.number(), 75);
    }
}

void TextAndNumbersTest::atomicWriteFailuresKeepOldFile() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("keep.cst"));
    TextFile::writeAtomically(path, "old\r\n");
    QCOMPARE(testsupport::readBytes(path), QByteArray("old\r\n"));

    // Folder made read-only: the temporary file cannot be created; the old file stays.
    QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::ExeOwner);
    bool failed = false;
    try {
        TextFile::writeAtomically(path, "new\r\n");
    } catch (const RuntimeError &) {
        failed = true;
    }
    QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    if (failed)
        QCOMPARE(testsupport::readBytes(path), QByteArray("old\r\n"));
    // (As root the folder permission does not stop the write; the other cases still apply.)

    for (const QString &bad : {dir.path(), dir.filePath(QStringLiteral("gone/x.cst"))}) {
        try {
            TextFile::writeAtomically(bad, "x");
            QFAIL("no error");
        } catch (const RuntimeError &error) {
            QVERIFY(error.number() == 75 || error.number() == 76);
        }
    }
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("keep.cst")});
}

// A save killed before its rename leaves its complete temporary file beside the target; the
// next successful save of that file removes it. A younger one may belong to a save still
// running elsewhere and stays, and files of other names are never touched.
void TextAndNumbersTest::atomicWriteRemovesItsLeftovers() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Office.grp"));
    const QDateTime old = QDateTime::currentDateTimeUtc().addSecs(-3600);
    const auto place = [&](const QString &name, bool stale) {
        const QString file = dir.filePath(name);
        testsupport::writeBytes(file, "[Print State]\r\n");
        if (stale) {
            QFile f(file);
            QVERIFY(f.open(QIODevice::ReadWrite));
            QVERIFY(f.setFileTime(old, QFileDevice::FileModificationTime));
        }
    };
    place(QStringLiteral("Office.grp.aB3xY9"), true);   // killed save: goes
    place(QStringLiteral("Office.grp.Qw12er"), false);  // running save: stays
    place(QStringLiteral("Office.grp.toolong1"), true); // not our naming: stays
    place(QStringLiteral("Other.grp.aB3xY9"), true);    // another file's: stays
    place(QStringLiteral("Office.grp.a-3xY9"), true);   // not our naming: stays
    TextFile::writeAtomically(path, "new\r\n");
    QCOMPARE(
        QDir(dir.path()).entryList(QDir::Files, QDir::Name),
        (QStringList{QStringLiteral("Office.grp"), QStringLiteral("Office.grp.Qw12er"),
                     QStringLiteral("Office.grp.a-3xY9"), QStringLiteral("Office.grp.toolong1"),
                     QStringLiteral("Other.grp.aB3xY9")}));
}

void TextAndNumbersTest::parseNumber_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<double>("value");
    QTest::newRow("integer") << "12" << true << 12.0;
    QTest::newRow("blanks") << "  -3.5 " << true << -3.5;
    QTest::newRow("thousands") << "1,234.50" << true << 1234.5;
    QTest::newRow("leading point") << ".5" << true << 0.5;
    QTest::newRow("trailing point") << "5." << true << 5.0;
    QTest::newRow("exponent") << "2.5E3" << true << 2500.0;
    QTest::newRow("basic exponent") << "1D2" << true << 100.0;
    QTest::newRow("plus") << "+7" << true << 7.0;
    QTest::newRow("dollar") << "$12.00" << true << 12.0;
    QTest::newRow("hex") << "&H1F" << true << 31.0;
    QTest::newRow("empty") << "" << false << 0.0;
    QTest::newRow("minus only") << "-" << false << 0.0;
    QTest::newRow("word") << "ea" << false << 0.0;
    QTest::newRow("nan") << "nan" << false << 0.0;
    QTest::newRow("inf") << "inf" << false << 0.0;
    QTest::newRow("trailing text") << "12ea" << false << 0.0;
    QTest::newRow("two points") << "1.2.3" << false << 0.0;
    QTest::newRow("bare exponent") << "1e" << false << 0.0;
    QTest::newRow("tiny underflow is zero") << "1e-400" << true << 0.0;
}

void TextAndNumbersTest::parseNumber() {
    QFETCH(QString, text);
    QFETCH(bool, valid);
    QFETCH(double, value);
    const std::optional<double> parsed = Conversions::parseNumber(text);
    QCOMPARE(parsed.has_value(), valid);
    if (valid)
        QCOMPARE(*parsed, value);
    QCOMPARE(Conversions::numberOrZero(text), valid ? value : 0.0);
}

void TextAndNumbersTest::overflow_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("1e400") << "1e400";
    QTest::newRow("-1e309") << "-1e309";
    QTest::newRow("many digits") << QString(400, QLatin1Char('9'));
}

void TextAndNumbersTest::overflow() {
    QFETCH(QString, text);
    try {
        Conversions::parseNumber(text);
        QFAIL("no overflow");
    } catch (const RuntimeError &error) {
        QCOMPARE(error.number(), 6);
    }
}

void TextAndNumbersTest::integerConversion_data() {
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("expected"); // -1 means overflow
    QTest::newRow("half to even down") << 2.5 << 2;
    QTest::newRow("half to even up") << 3.5 << 4;
    QTest::newRow("negative half") << -2.5 << -2;
    QTest::newRow("max") << 32767.0 << 32767;
    QTest::newRow("over") << 32767.6 << -1;
    QTest::newRow("min") << -32768.0 << -32768;
}

void TextAndNumbersTest::integerConversion() {
    QFETCH(double, value);
    QFETCH(int, expected);
    try {
        QCOMPARE(int(Conversions::toInt16(value)), expected);
    } catch (const RuntimeError &error) {
        QCOMPARE(expected, -1);
        QCOMPARE(error.number(), 6);
    }
    QCOMPARE(Conversions::toInt32(720.0000001), 720);
}

void TextAndNumbersTest::errorReportText() {
    ScriptedPrompter prompter;
    reportError(prompter, QStringLiteral("Load Sif."), RuntimeError(ErrorNumber::Overflow));
    QCOMPARE(prompter.calls().size(), 1);
    const auto call = prompter.calls().first();
    QCOMPARE(call.title, QStringLiteral("Tavrel - Error"));
    QCOMPARE(call.icon, MessageIcon::Exclamation);
    QCOMPARE(call.buttons, MessageButtons::Ok);
    const QString mismatch =
        testsupport::compareWithGolden(call.text.toUtf8(), QStringLiteral("base/error-report.txt"));
    QVERIFY2(mismatch.isEmpty(), qPrintable(mismatch));
}

TAVREL_TEST(TextAndNumbersTest)
#include "TextAndNumbersTest.moc"

// Small alphabets make repeats and lines inside lines. Characters get a byte each where they are
// few, and two or three bytes in the manner of UTF-8 where they are many; there a match must
// still start and end on whole characters. Runs of one letter growing line by line are met again
// and again after themselves and never before, which is the costly case for the quick answer.
void TextAndNumbersTest::containedLinesAgreeWithSearch() {
    const auto check = [](const QStringList &lines) {
        const std::vector<bool> contained =
            containedInEarlierLines(QList<QStringView>(lines.cbegin(), lines.cend()));
        QCOMPARE(qsizetype(contained.size()), lines.size());
        for (qsizetype i = 0; i < lines.size(); ++i) {
            bool expected = false;
            for (qsizetype j = 0; j < i && !expected; ++j)
                expected = lines[j].contains(lines[i]);
            QVERIFY2(contained[std::size_t(i)] == expected,
                     qPrintable(QStringLiteral("line %1 of %2").arg(i).arg(lines.join(u'|'))));
        }
    };
    const QString alphabet = QStringLiteral("ab\u00e9\u20ac") + QChar(char16_t(0xD800));
    QRandomGenerator random(1234);
    for (int round = 0; round < 300; ++round) {
        const int letters = 2 + round % 4;
        QStringList lines;
        if (round % 10 == 1) {
            for (int length = 1; length < 60; ++length)
                lines << QString(length, u'a');
        }
        // A line of 300 distinct characters leaves no byte per character for the sort.
        if (round % 3 == 0) {
            QString wide;
            for (char16_t unit = 0x4E00; unit < 0x4E00 + 300; ++unit)
                wide += QChar(unit);
            lines << wide;
        }
        for (int count = random.bounded(1, 40); count > 0; --count) {
            QString line;
            for (int i = random.bounded(0, 1 + round % 12); i > 0; --i)
                line += alphabet[random.bounded(letters)];
            lines << line;
        }
        check(lines);
        if (QTest::currentTestFailed())
            return;
    }
}
