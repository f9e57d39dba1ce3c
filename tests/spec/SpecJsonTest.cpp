#include "spec/SpecJson.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTest>

#include <cmath>
#include <cstring>
#include <limits>

using namespace tavrel;

namespace {

struct CliRun {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

CliRun runSpec(const QString &jobFile) {
    QProcess process;
    process.start(QStringLiteral(TAVREL_BIN_DIR "/tavrel-cli"), {QStringLiteral("spec"), jobFile});
    CliRun run;
    if (!process.waitForFinished(60000))
        return run;
    run.exitCode = process.exitCode();
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    return run;
}

} // namespace

class SpecJsonTest : public QObject {
    Q_OBJECT

private slots:
    void numbersReadBackExactly();
    void streamedTextIsTheDocumentsText_data();
    void streamedTextIsTheDocumentsText();
    void cliJob();
    void cliReadingFailureStillPrints();
    void cliChargeSumFailure();
    void cliWithoutSifPath();
    void demoJob();
};

void SpecJsonTest::numbersReadBackExactly() {
    const QList<double> values{0.1 + 0.2,
                               1.0 / 3.0,
                               123456789.123456789,
                               1e-300,
                               -2.5e+300,
                               std::numeric_limits<double>::denorm_min(),
                               std::nextafter(1.0, 2.0),
                               9007199254740993.0,
                               16};
    for (const double value : values) {
        SifHeader header;
        header.totalList = value;
        const QByteArray text = SpecJson::text(SpecJson::header(header));
        const double back =
            QJsonDocument::fromJson(text).object().value(QStringLiteral("TL")).toDouble();
        QCOMPARE(std::memcmp(&back, &value, sizeof value), 0);
    }
    SifHeader header;
    header.totalList = 16;
    QVERIFY(SpecJson::text(SpecJson::header(header)).contains("\"TL\": 16,"));
}

void SpecJsonTest::streamedTextIsTheDocumentsText_data() {
    QTest::addColumn<int>("items");
    QTest::addColumn<bool>("withOrder");
    QTest::newRow("no items, no order") << 0 << false;
    QTest::newRow("one item") << 1 << false;
    QTest::newRow("three items and an order") << 3 << true;
}

// The JSON streamed an item at a time is byte for byte the JSON of the whole document.
void SpecJsonTest::streamedTextIsTheDocumentsText() {
    QFETCH(int, items);
    QFETCH(bool, withOrder);
    SpecData data;
    const QString awkward =
        QStringLiteral("\"quoted\" back\\slash\ttab\rCR \u00e9\u20ac\x01 {[,]}");
    for (int i = 1; i <= items; ++i) {
        const int index = data.appendItem();
        SifItem &item = data.item(index);
        item.setText(ItemText::PartNumber, QStringLiteral("P%1").arg(i));
        item.setText(ItemText::PartDescription, awkward.repeated(i));
        item.quantity = 0.1 * i;
        item.listPrice = i == 2 ? 1e300 : -2.5;
        item.setText(ItemText::OptionCodes, QStringLiteral("A\rB"));
        item.setText(ItemText::OptionDescriptions, QStringLiteral("x\ry"));
    }
    data.header.totalList = 16;
    data.header.stText = awkward;
    OrderData order;
    std::optional<double> chargeSum;
    if (withOrder) {
        order.present = order.version4 = true;
        order.header.comments = awkward;
        order.salesPersons.push_back({QStringLiteral("Ann"), QStringLiteral("7")});
        order.charges.push_back({QStringLiteral("12.50"), QStringLiteral("Design"), awkward});
        chargeSum = 12.5;
    }
    const FieldLengths lengths = FieldLengths::builtIn();
    QByteArray streamed;
    int pieces = 0;
    SpecJson::write(data, order, chargeSum, lengths, [&](const QByteArray &piece) {
        streamed += piece;
        ++pieces;
    });
    QCOMPARE(streamed, SpecJson::text(SpecJson::document(data, order, chargeSum, lengths)));
    QCOMPARE(pieces, items + 2); // the head, each item, the tail
}

void SpecJsonTest::cliJob() {
    const CliRun run = runSpec(testsupport::dataPath(QStringLiteral("spec/cli-job/job.ini")));
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(!run.err.contains("Error"), run.err.constData());
    const QString message =
        testsupport::compareWithGolden(run.out, QStringLiteral("spec/cli-job.json"));
    QVERIFY2(message.isEmpty(), qPrintable(message));
}

void SpecJsonTest::cliReadingFailureStillPrints() {
    const CliRun run = runSpec(testsupport::dataPath(QStringLiteral("spec/cli-bad/job.ini")));
    QCOMPARE(run.exitCode, 1);
    for (const char *line :
         {"An Error Occured at - Load Sif.", "Error Number: 6", "Error Description: Overflow"})
        QVERIFY2(run.err.contains(line), run.err.constData());
    const QJsonObject document = QJsonDocument::fromJson(run.out).object();
    const QJsonArray items = document.value(QStringLiteral("items")).toArray();
    QCOMPARE(items.size(), 2);
    QCOMPARE(items[0].toObject().value(QStringLiteral("PL")).toDouble(), 3.0);
    QCOMPARE(items[0].toObject().value(QStringLiteral("PLE")).toDouble(), 0.0);
    QCOMPARE(document.value(QStringLiteral("order")).toObject().value(QStringLiteral("present")),
             QJsonValue(false));
}

void SpecJsonTest::cliChargeSumFailure() {
    const CliRun run = runSpec(testsupport::dataPath(QStringLiteral("spec/cli-bad/charges.ini")));
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.err.contains("Error 13: Type mismatch"), run.err.constData());
    const QJsonObject order =
        QJsonDocument::fromJson(run.out).object().value(QStringLiteral("order")).toObject();
    QCOMPARE(order.value(QStringLiteral("chargeSum")), QJsonValue(QJsonValue::Null));
    QCOMPARE(order.value(QStringLiteral("charges")).toArray().size(), 2);
}

void SpecJsonTest::cliWithoutSifPath() {
    const CliRun run = runSpec(testsupport::dataPath(QStringLiteral("spec/cli-bad/none.ini")));
    QCOMPARE(run.exitCode, 1);
    QVERIFY(run.err.contains("No Active Document Found."));
    QVERIFY(run.out.isEmpty());
}

void SpecJsonTest::demoJob() {
    const QString jobFile = testsupport::sourcePath(QStringLiteral("examples/demo/job.ini"));
    if (!QFileInfo::exists(jobFile))
        QSKIP("the demo job is not there");
    const CliRun run = runSpec(jobFile);
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(!run.err.contains("Error"), run.err.constData());
    const QString message =
        testsupport::compareWithGolden(run.out, QStringLiteral("spec/demo-job.json"));
    QVERIFY2(message.isEmpty(), qPrintable(message));
}

TAVREL_TEST(SpecJsonTest)
#include "SpecJsonTest.moc"
