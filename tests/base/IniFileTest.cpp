#include "base/IniFile.h"
#include "base/RuntimeError.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

class IniFileTest : public QObject {
    Q_OBJECT

private slots:
    void reading_data();
    void reading();
    void missingKeyGivesDefault();
    void writeKeepsOtherLines_data();
    void writeKeepsOtherLines();
    void writeIntoMissingFile();
    void failedWriteLeavesFile();
    void parseBool_data();
    void parseBool();
};

void IniFileTest::reading_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("expected");

    QTest::newRow("plain") << "[Printer]\nFontName=Arial\n"
                           << "Printer"
                           << "FontName"
                           << "Arial";
    QTest::newRow("section case") << "[PRINTER]\nFontName=Arial\n"
                                  << "printer"
                                  << "FontName"
                                  << "Arial";
    QTest::newRow("key case") << "[Printer]\nFONTNAME=Arial\n"
                              << "Printer"
                              << "fontname"
                              << "Arial";
    QTest::newRow("first key wins") << "[P]\nK=1\nk=2\n"
                                    << "P"
                                    << "K"
                                    << "1";
    QTest::newRow("first section wins") << "[P]\nK=1\n[p]\nK=2\nJ=3\n"
                                        << "P"
                                        << "K"
                                        << "1";
    QTest::newRow("repeated section ignored") << "[P]\nK=1\n[p]\nJ=3\n"
                                              << "P"
                                              << "J"
                                              << "<missing>";
    QTest::newRow("before first section ignored") << "K=0\n[P]\nJ=1\n"
                                                  << "P"
                                                  << "K"
                                                  << "<missing>";
    QTest::newRow("blanks trimmed") << "[P]\n  K  =  a b  \n"
                                    << "P"
                                    << "K"
                                    << "a b";
    QTest::newRow("quotes stripped") << "[P]\nK=\"a b\"\n"
                                     << "P"
                                     << "K"
                                     << "a b";
    QTest::newRow("single quote kept") << "[P]\nK=\"a b\n"
                                       << "P"
                                       << "K"
                                       << "\"a b";
    QTest::newRow("crlf") << "[P]\r\nK=v\r\nJ=w\r\n"
                          << "P"
                          << "J"
                          << "w";
    QTest::newRow("equals in value") << "[P]\nK=a=b\n"
                                     << "P"
                                     << "K"
                                     << "a=b";
    QTest::newRow("empty value") << "[P]\nK=\n"
                                 << "P"
                                 << "K"
                                 << "";
    QTest::newRow("comment") << "[P]\n;K=1\nK=2\n"
                             << "P"
                             << "K"
                             << "2";
    QTest::newRow("cut at 259") << QStringLiteral("[P]\nK=") + QString(300, QLatin1Char('x')) << "P"
                                << "K" << QString(259, QLatin1Char('x'));
    QTest::newRow("no section header close") << "[P\nK=1\n"
                                             << "P"
                                             << "K"
                                             << "<missing>";
}

void IniFileTest::reading() {
    QFETCH(QString, text);
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, expected);
    const IniFile ini = IniFile::fromText(text);
    QCOMPARE(ini.value(section, key, QStringLiteral("<missing>")), expected);
}

void IniFileTest::missingKeyGivesDefault() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("none.ini"));
    QCOMPARE(ReadIniValue(QStringLiteral("Printer"), QStringLiteral("Function"), path,
                          QStringLiteral("dflt")),
             QStringLiteral("dflt"));
}

void IniFileTest::writeKeepsOtherLines_data() {
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("after");

    QTest::newRow("replace keeps crlf, comments and other sections")
        << QByteArray(
               "; "
               "job\r\n[Other]\r\nA=1\r\n\r\n[Printer]\r\nfunction=1\r\nB=2\r\n\r\n[Z]\r\nC=3\r\n")
        << "PRINTER"
        << "Function"
        << "2"
        << QByteArray(
               "; "
               "job\r\n[Other]\r\nA=1\r\n\r\n[Printer]\r\nfunction=2\r\nB=2\r\n\r\n[Z]\r\nC=3\r\n");
    QTest::newRow("add key at end of section before blank line")
        << QByteArray("[Printer]\r\nA=1\r\n\r\n[Z]\r\nC=3\r\n") << "Printer"
        << "New"
        << "x" << QByteArray("[Printer]\r\nA=1\r\nNew=x\r\n\r\n[Z]\r\nC=3\r\n");
    QTest::newRow("add section at end keeps lf")
        << QByteArray("[A]\nK=1\n") << "Printer"
        << "Box"
        << "0" << QByteArray("[A]\nK=1\n\n[Printer]\nBox=0\n");
    QTest::newRow("windows-1252 kept") << QByteArray("[P]\r\nName=Caf\xe9\r\n") << "P"
                                       << "Other" << QStringLiteral("\u00e9t\u00e9")
                                       << QByteArray("[P]\r\nName=Caf\xe9\r\nOther=\xe9t\xe9\r\n");
}

void IniFileTest::writeKeepsOtherLines() {
    QFETCH(QByteArray, before);
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QByteArray, after);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(path, before);
    QVERIFY(WriteIniValue(section, key, value, path));
    QCOMPARE(testsupport::readBytes(path), after);
}

void IniFileTest::writeIntoMissingFile() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("new.ini"));
    QVERIFY(
        WriteIniValue(QStringLiteral("Printer"), QStringLiteral("K"), QStringLiteral("v"), path));
    QCOMPARE(testsupport::readBytes(path), QByteArray("[Printer]\r\nK=v\r\n"));
}

void IniFileTest::failedWriteLeavesFile() {
    QTemporaryDir dir;
    // A path that is a folder, and a folder that does not exist.
    QVERIFY(
        !WriteIniValue(QStringLiteral("P"), QStringLiteral("K"), QStringLiteral("v"), dir.path()));
    QVERIFY(!WriteIniValue(QStringLiteral("P"), QStringLiteral("K"), QStringLiteral("v"),
                           dir.filePath(QStringLiteral("gone/job.ini"))));
    QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("gone"))));
}

void IniFileTest::parseBool_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("expected");
    QTest::newRow("1") << "1" << true;
    QTest::newRow("True") << "True" << true;
    QTest::newRow("true") << "true" << false;
    QTest::newRow("TRUE") << "TRUE" << false;
    QTest::newRow("0") << "0" << false;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("yes") << "yes" << false;
    QTest::newRow(" 1") << " 1" << false;
}

void IniFileTest::parseBool() {
    QFETCH(QString, text);
    QFETCH(bool, expected);
    QCOMPARE(ParseIniBool(text), expected);
    QCOMPARE(ExportFlagText(text), expected);
}

TAVREL_TEST(IniFileTest)
#include "IniFileTest.moc"
