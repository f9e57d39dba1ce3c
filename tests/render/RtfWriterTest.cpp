#include "render/RtfWriter.h"

#include "common/TestRegistry.h"
#include "common/TestSupport.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

class RtfWriterTest : public QObject {
    Q_OBJECT

private slots:
    void text_data();
    void text();
    void escape_data();
    void escape();
    void joinedDataKeepsLineBreaks();
    void documentMatchesGoldenFile();
    void documentOpensInLibreOffice();

private:
    static QString sampleBody();
};

void RtfWriterTest::text_data() {
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("blanks");
    QTest::addColumn<QString>("data");
    QTest::addColumn<QString>("expected");
    QTest::newRow("1 starts a left paragraph") << 1 << 5 << "Chair"
                                               << "\\ql Chair";
    QTest::newRow("2 with blanks") << 2 << 3 << "Chair"
                                   << "\\par   Chair";
    QTest::newRow("2 with one blank") << 2 << 1 << "Chair"
                                      << "\\par Chair";
    QTest::newRow("2 without blanks keeps the text apart") << 2 << 0 << "Chair"
                                                           << "\\par Chair";
    QTest::newRow("2 without blanks, digits") << 2 << 0 << "12 Chairs"
                                              << "\\par 12 Chairs";
    QTest::newRow("2 without blanks, escape") << 2 << 0 << "\u00E9t\u00E9"
                                              << "\\par\\'e9t\\'e9";
    QTest::newRow("2 without blanks, blank") << 2 << 0 << " x"
                                             << "\\par x";
    QTest::newRow("3 writes one blank less") << 3 << 4 << "Desk"
                                             << "   Desk";
    QTest::newRow("3 with one blank") << 3 << 1 << "Desk"
                                      << "Desk";
    QTest::newRow("3 without blanks") << 3 << 0 << "Desk"
                                      << "Desk";
    QTest::newRow("0 writes nothing") << 0 << 2 << "Desk"
                                      << "";
    QTest::newRow("4 writes nothing") << 4 << 2 << "Desk"
                                      << "";
    QTest::newRow("data escaped") << 1 << 0 << "{\\rtf}"
                                  << "\\ql \\{\\\\rtf\\}";
}

void RtfWriterTest::text() {
    QFETCH(int, mode);
    QFETCH(int, blanks);
    QFETCH(QString, data);
    QFETCH(QString, expected);
    QCOMPARE(RtfWriter::text(mode, blanks, RtfMarkup::fromData(data)), expected);
}

void RtfWriterTest::escape_data() {
    QTest::addColumn<QString>("data");
    QTest::addColumn<QString>("expected");
    QTest::newRow("braces and backslash") << "{\\rtf}"
                                          << "\\{\\\\rtf\\}";
    QTest::newRow("script is plain text") << "<script>alert(1)</script>"
                                          << "<script>alert(1)</script>";
    QTest::newRow("ampersand") << "a & b"
                               << "a & b";
    QTest::newRow("quotes") << "\"quoted\""
                            << "\"quoted\"";
    QTest::newRow("accent") << "\u00E9"
                            << "\\'e9";
    QTest::newRow("euro") << "\u20AC"
                          << "\\'80";
    QTest::newRow("outside the code page") << "\u2603"
                                           << "\\u9731?";
    QTest::newRow("above 32767 is negative") << "\uFB01"
                                             << "\\u-1279?";
    QTest::newRow("surrogate pair") << QString::fromUcs4(U"\U0001F600") << "\\u-10179?\\u-8704?";
}

void RtfWriterTest::escape() {
    QFETCH(QString, data);
    QFETCH(QString, expected);
    QCOMPARE(RtfWriter::escape(data), expected);
}

void RtfWriterTest::joinedDataKeepsLineBreaks() {
    QCOMPARE(RtfMarkup::fromJoinedData(u"[=Notes:=] \\line {a} \\line b\\c", u" \\line ").text(),
             QString("[=Notes:=] \\line \\{a\\} \\line b\\\\c"));
}

QString RtfWriterTest::sampleBody() {
    QString body;
    body += RtfWriter::text(1, 0, RtfMarkup::fromData(u"Part Number"));
    body += RtfWriter::text(3, 4, RtfMarkup::fromData(u"Description"));
    body += RtfWriter::text(2, 2, RtfMarkup::fromData(u"PN-100"));
    body += RtfWriter::text(3, 3, RtfMarkup::fromData(u"Caf\u00E9 table {oak} \\ 30\u2033"));
    body += RtfWriter::text(2, 2, RtfMarkup::fromJoinedData(u"OPT1 \\line OPT2", u" \\line "));
    return body;
}

void RtfWriterTest::documentMatchesGoldenFile() {
    const QByteArray bytes = RtfWriter::documentBytes(sampleBody(), "Times New Roman", 12);
    for (const char byte : bytes)
        QVERIFY(uchar(byte) < 0x80);
    const QString failure = testsupport::compareWithGolden(bytes, "render/export/document.rtf");
    QVERIFY2(failure.isEmpty(), qPrintable(failure));

    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    RtfWriter::writeDocument(dir.filePath("OfficeCst.rtf"), sampleBody(), "Times New Roman", 12);
    QCOMPARE(testsupport::readBytes(dir.filePath("OfficeCst.rtf")), bytes);
}

void RtfWriterTest::documentOpensInLibreOffice() {
    const QString soffice = QStandardPaths::findExecutable("soffice");
    if (soffice.isEmpty())
        QSKIP("LibreOffice is not installed");
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    RtfWriter::writeDocument(dir.filePath("doc.rtf"), sampleBody(), "Arial", 10);
    QProcess process;
    process.setWorkingDirectory(dir.path());
    process.start(soffice, {"--headless", "-env:UserInstallation=file://" + dir.filePath("profile"),
                            "--convert-to", "txt:Text", "doc.rtf"});
    QVERIFY(process.waitForFinished(120000));
    const QString text = QString::fromUtf8(testsupport::readBytes(dir.filePath("doc.txt")));
    QVERIFY2(text.contains("Caf\u00E9 table {oak} \\ 30\u2033"), qPrintable(text));
}

TAVREL_TEST(RtfWriterTest)
#include "RtfWriterTest.moc"
