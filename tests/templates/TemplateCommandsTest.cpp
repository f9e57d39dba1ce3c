#include "common/TestRegistry.h"
#include "common/TestSupport.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct Run {
    int status = -1;
    QByteArray out;
    QByteArray err;
};

Run runCli(const QStringList &args) {
    QProcess process;
    process.start(QStringLiteral(TAVREL_BIN_DIR) + QStringLiteral("/tavrel-cli"), args);
    Run run;
    if (!process.waitForFinished(60000))
        return run;
    run.status = process.exitCode();
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    return run;
}

QString classicPath(const char *name) {
    return testsupport::sourcePath(QStringLiteral("resources/Print Templates/") +
                                   QLatin1String(name));
}

} // namespace

class TemplateCommandsTest : public QObject {
    Q_OBJECT

private slots:
    void templateAsJson();
    void resaveKeepsEveryLineButTheTitle();
    void missingTemplate();
    void checkPrint_data();
    void checkPrint();
};

void TemplateCommandsTest::templateAsJson() {
    const Run run = runCli({QStringLiteral("template"), classicPath("Classic Customer.cst")});
    QCOMPARE(run.status, 0);
    const QJsonObject json = QJsonDocument::fromJson(run.out).object();
    QCOMPARE(json.value(QStringLiteral("kind")).toString(), QStringLiteral("custom"));
    QCOMPARE(
        json.value(QStringLiteral("otherInfo")).toObject().value(QStringLiteral("RealONNWidth")),
        QJsonValue(1200));
    const QJsonArray boxes = json.value(QStringLiteral("boxes")).toArray();
    QVERIFY(boxes.size() > 10);
    const QJsonObject first = boxes.first().toObject();
    QCOMPARE(first.value(QStringLiteral("slot")).toInt(), 1);
    QCOMPARE(first.value(QStringLiteral("Container")).toString(),
             QStringLiteral("shpheaderfooter(0)"));
    QCOMPARE(first.size(), 32 + 2); // every key, the slot and the header text
    QVERIFY(first.value(QStringLiteral("Placed")).isBool());
    bool sawPartNumber = false;
    for (const QJsonValue &box : boxes) {
        if (box.toObject().value(QStringLiteral("Caption")) == QStringLiteral("Part Number")) {
            sawPartNumber = true;
            QCOMPARE(box.toObject().value(QStringLiteral("HeaderText")).toString(),
                     QStringLiteral("PN"));
            QCOMPARE(box.toObject().value(QStringLiteral("Body")).toBool(), true);
        }
    }
    QVERIFY(sawPartNumber);
    QVERIFY(json.value(QStringLiteral("lines")).toArray().size() >= 2);
    const Run summary = runCli({QStringLiteral("template"), classicPath("Classic Customer.sum")});
    const QJsonArray rects =
        QJsonDocument::fromJson(summary.out).object().value(QStringLiteral("rectangles")).toArray();
    QCOMPARE(rects.size(), 1);
    QCOMPARE(rects.first().toObject().value(QStringLiteral("Location")).toInt(), 2);
}

void TemplateCommandsTest::resaveKeepsEveryLineButTheTitle() {
    QTemporaryDir dir;
    for (const char *name : {"Classic.cov", "Classic Customer.cst", "Classic Customer.sum"}) {
        const QString out = dir.filePath(QLatin1String(name));
        const Run run = runCli(
            {QStringLiteral("template"), classicPath(name), QStringLiteral("--resave"), out});
        QCOMPARE(run.status, 0);
        const QByteArray before = testsupport::readBytes(classicPath(name));
        const QByteArray after = testsupport::readBytes(out);
        QCOMPARE(after.mid(after.indexOf('\n')), before.mid(before.indexOf('\n')));
        QCOMPARE(after.left(20), before.left(20));
    }
    const Run hand = runCli({QStringLiteral("template"),
                             testsupport::dataPath(QStringLiteral("templates/handwritten.cst")),
                             QStringLiteral("--resave"), dir.filePath(QStringLiteral("h.cst"))});
    QCOMPARE(hand.status, 0);
    const QByteArray expected = testsupport::readBytes(
        testsupport::dataPath(QStringLiteral("templates/handwritten.resaved.cst")));
    const QByteArray resaved = testsupport::readBytes(dir.filePath(QStringLiteral("h.cst")));
    QCOMPARE(resaved.mid(resaved.indexOf('\n')), expected.mid(expected.indexOf('\n')));
}

void TemplateCommandsTest::missingTemplate() {
    const Run run = runCli({QStringLiteral("template"), QStringLiteral("/nonexistent/a.cov")});
    QVERIFY(run.status != 0);
    QVERIFY(run.out.isEmpty());
    QVERIFY(!run.err.isEmpty());
    QTemporaryDir dir;
    const Run failed = runCli({QStringLiteral("template"), classicPath("Classic.cov"),
                               QStringLiteral("--resave"), dir.path()});
    QVERIFY(failed.status != 0);
    QVERIFY(failed.err.contains("error 75"));
}

void TemplateCommandsTest::checkPrint_data() {
    QTest::addColumn<QByteArray>("job");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<int>("status");
    QTest::newRow("defaults from a relative template folder")
        << QByteArray("[Printer]\r\nTemplate Directory=templates\r\n") << QByteArray("OK\n") << 0;
    QTest::newRow("backslash folder")
        << QByteArray("[Printer]\r\nTemplate Directory=.\\templates\\\r\n") << QByteArray("OK\n")
        << 0;
    QTest::newRow("missing body") << QByteArray("[Printer]\r\nTemplate Directory=templates\r\n"
                                                "Body Template=nowhere.cst\r\n")
                                  << QByteArray("Custom Template Not Found.\n") << 1;
    QTest::newRow("nothing printable")
        << QByteArray("[Printer]\r\nCover Printable=0\r\nBody Printable=0\r\n"
                      "Summary Printable=0\r\n")
        << QByteArray("At least select one item to be printable.\n") << 1;
    QTest::newRow("empty folder means beside the executable")
        << QByteArray("[Printer]\r\nTemplate Directory=\r\n") << QByteArray("OK\n") << 0;
}

void TemplateCommandsTest::checkPrint() {
    QFETCH(QByteArray, job);
    QFETCH(QByteArray, output);
    QFETCH(int, status);
    QTemporaryDir dir;
    QDir(dir.path()).mkdir(QStringLiteral("templates"));
    for (const char *name : {"Classic.cov", "Classic Customer.cst", "Classic Customer.sum"})
        QFile::copy(classicPath(name),
                    dir.filePath(QStringLiteral("templates/")) + QLatin1String(name));
    const QString jobFile = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(jobFile, job);
    const Run run = runCli({QStringLiteral("check-print"), jobFile});
    QCOMPARE(run.out, output);
    QCOMPARE(run.status, status);
    // The defaults it read are in the job file now.
    QVERIFY(testsupport::readBytes(jobFile).contains("Summary Printable="));
}

TAVREL_TEST(TemplateCommandsTest)
#include "TemplateCommandsTest.moc"
