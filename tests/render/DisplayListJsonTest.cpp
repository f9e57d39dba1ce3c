#include "render/DisplayListJson.h"
#include "SampleDocument.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

class DisplayListJsonTest : public QObject {
    Q_OBJECT

private slots:
    void dumpMatchesExpected();
    void numbersAreRounded();
    void renderCommandWritesEveryOutput();
};

void DisplayListJsonTest::dumpMatchesExpected() {
    QTemporaryDir dir;
    PageEngine engine;
    drawSampleDocument(engine, writeSamplePicture(dir.filePath(QStringLiteral("logo.png"))));
    QByteArray json = displayListJsonText(engine);
    json.replace(dir.path().toUtf8(), "<dir>");
    const QString problem =
        testsupport::compareWithGolden(json, QStringLiteral("render/sample.json"));
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

void DisplayListJsonTest::numbersAreRounded() {
    PageEngine engine;
    engine.StartDoc();
    engine.TextBox(QStringLiteral("A\rB\rC"), 720.004, 1000.0 / 3.0, 2000, 0);
    engine.DrawLine(0.1 + 0.2, -0.001, 12240, 15839.999);
    const QJsonObject page = displayListJson(engine)[QStringLiteral("pages")][0].toObject();
    const QJsonObject text = page[QStringLiteral("items")][0].toObject();
    QCOMPARE(text[QStringLiteral("x")].toDouble(), 720.0);
    QCOMPARE(text[QStringLiteral("y")].toDouble(), 333.33);
    const QJsonObject line = page[QStringLiteral("items")][1].toObject();
    QCOMPARE(line[QStringLiteral("x1")].toDouble(), 0.3);
    QCOMPARE(line[QStringLiteral("y2")].toDouble(), 15840.0);
    const QByteArray bytes = displayListJsonText(engine);
    QVERIFY2(bytes.contains("\"y\": 333.33\n"), bytes.constData());
    QVERIFY2(bytes.contains("\"x2\": 12240,"), bytes.constData());
    QVERIFY2(bytes.contains("\"y1\": 0,"), bytes.constData()); // no "-0"
}

void DisplayListJsonTest::renderCommandWritesEveryOutput() {
    // The job file prints no section: the print check refuses it, and nothing is written.
    QTemporaryDir dir;
    testsupport::writeBytes(dir.filePath(QStringLiteral("job.sif")), "PN=DESK\r\nQT=1\r\n");
    const QString job = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(job, "[Printer]\r\nTempPrintDocument=job.sif\r\nFunction=2\r\n"
                                 "Cover Printable=0\r\nBody Printable=0\r\n"
                                 "Summary Printable=0\r\n");
    QProcess refused;
    refused.start(QStringLiteral(TAVREL_BIN_DIR "/tavrel-cli"),
                  {QStringLiteral("render"), job, QStringLiteral("--dump"),
                   dir.filePath(QStringLiteral("dump.json"))});
    QVERIFY(refused.waitForFinished(60000));
    QCOMPARE(refused.exitCode(), 1);
    QCOMPARE(refused.readAllStandardError(),
             QByteArray("At least select one item to be printable.\n"));
    QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("dump.json"))));

    // The body alone from a template that places nothing: the document is the one empty page
    // StartDoc begins.
    testsupport::writeBytes(dir.filePath(QStringLiteral("empty.cst")), "[Other Info]\r\n");
    testsupport::writeBytes(job, "[Printer]\r\nTempPrintDocument=job.sif\r\nFunction=2\r\n"
                                 "Body Template=empty.cst\r\n"
                                 "Cover Printable=0\r\nBody Printable=1\r\n"
                                 "Summary Printable=0\r\n");
    QProcess cli;
    cli.start(QStringLiteral(TAVREL_BIN_DIR "/tavrel-cli"),
              {QStringLiteral("render"), job, QStringLiteral("--dump"),
               dir.filePath(QStringLiteral("dump.json")), QStringLiteral("--pdf"),
               dir.filePath(QStringLiteral("out.pdf")), QStringLiteral("--png"),
               dir.filePath(QStringLiteral("png")), QStringLiteral("--dpi"), QStringLiteral("50")});
    QVERIFY(cli.waitForFinished(60000));
    QVERIFY2(cli.exitCode() == 0, cli.readAllStandardError().constData());

    const QJsonObject dump =
        QJsonDocument::fromJson(testsupport::readBytes(dir.filePath(QStringLiteral("dump.json"))))
            .object();
    QCOMPARE(dump[QStringLiteral("pageCount")].toInt(), 1);
    const QJsonObject page = dump[QStringLiteral("pages")].toArray().at(0).toObject();
    QCOMPARE(page[QStringLiteral("number")].toInt(), 1);
    QCOMPARE(page[QStringLiteral("width")].toDouble(), 12240.0);
    QCOMPARE(page[QStringLiteral("height")].toDouble(), 15840.0);
    QCOMPARE(page[QStringLiteral("landscape")].toBool(), false);
    QCOMPARE(page[QStringLiteral("items")].toArray().size(), 0);
    QVERIFY(QFile::exists(dir.filePath(QStringLiteral("out.pdf"))));
    const QImage png(dir.filePath(QStringLiteral("png/page-001.png")));
    QCOMPARE(png.size(), QSize(425, 550)); // 8.5 x 11 inches at 50 dpi

    QProcess bad;
    bad.start(QStringLiteral(TAVREL_BIN_DIR "/tavrel-cli"),
              {QStringLiteral("render"), job, QStringLiteral("--dpi")});
    QVERIFY(bad.waitForFinished(60000));
    QCOMPARE(bad.exitCode(), 2);
}

TAVREL_TEST(DisplayListJsonTest)
#include "DisplayListJsonTest.moc"
