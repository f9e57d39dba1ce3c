#include "spec/OrderFileReader.h"
#include "base/ErrorReport.h"
#include "base/RuntimeError.h"
#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "spec/SpecJson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

namespace {

QStringList lines(const char *text) {
    return QString::fromLatin1(text).split(QLatin1Char('\n'));
}

// The order as JSON, compact, so a whole list or object compares in one line.
QString orderValue(const OrderData &order, const QString &key) {
    const QJsonValue value = SpecJson::order(order, 0.0).value(key);
    if (value.isString())
        return value.toString();
    return QString::fromUtf8(QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact));
}

} // namespace

class OrderFileReaderTest : public QObject {
    Q_OBJECT

private slots:
    void header_data();
    void header();
    void charges_data();
    void charges();
    void chargeSum_data();
    void chargeSum();
    void version_data();
    void version();
    void loadMissingAndPresentFile();
    void fillOrderField_data();
    void fillOrderField();
    void fillOrderFieldOutsideSlots();
    void formatRequestedDate_data();
    void formatRequestedDate();
};

void OrderFileReaderTest::header_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const char *text, const char *key, const QString &value) {
        QTest::newRow(name) << QString::fromLatin1(text) << QString::fromLatin1(key) << value;
    };
    row("last line of a tag wins", "CO=1\nCO=2", "CO", QStringLiteral("2"));
    row("lower-case tag ignored", "co=1", "CO", QString());
    row("value as written", "CO=  x ", "CO", QStringLiteral("  x "));
    row("sold address line 2", "D3=b", "D3", QStringLiteral("b"));
    row("sold phone", "DP=555", "DP", QStringLiteral("555"));
    row("ship phone", "PP=556", "PP", QStringLiteral("556"));
    row("ship code", "PC=S1", "PC", QStringLiteral("S1"));
    row("ship fax", "PF=9", "PF", QStringLiteral("9"));
    row("order type", "OT=Rush", "OT", QStringLiteral("Rush"));
    row("comments joined", "TN=a\nTN=b", "TN", QStringLiteral("a\rb"));
    row("identical comment once", "TN=a\nTN=a", "TN", QStringLiteral("a"));
    row("contained comment skipped", "TN=xaby\nTN=ab", "TN", QStringLiteral("xaby"));
    row("empty comment after text skipped", "TN=a\nTN=", "TN", QStringLiteral("a"));
    row("comment across two earlier ones kept", "TN=ab\nTN=cd\nTN=bc\nTN=c", "TN",
        QStringLiteral("ab\rcd\rbc"));
    row("sales with numbers", "K1=Ann\nL1=100\nK2=Bob\nL7=200", "sales",
        QStringLiteral(R"([{"name":"Ann","number":"100"},{"name":"Bob","number":"200"}])"));
    row("number before any sales person skipped", "L1=100\nK1=Ann", "sales",
        QStringLiteral(R"([{"name":"Ann","number":""}])"));
    row("higher index leaves gaps", "K3=Cy", "sales",
        QStringLiteral(R"([{"name":"","number":""},{"name":"","number":""},)"
                       R"({"name":"Cy","number":""}])"));
    row("lower index shrinks the list", "K2=Bob\nK1=Ann", "sales",
        QStringLiteral(R"([{"name":"Ann","number":""}])"));
    row("index 0 stores nothing", "K1=Ann\nK0=Zed\nL1=5", "sales",
        QStringLiteral(R"([{"name":"Ann","number":""}])"));
    row("K without digit is no sales line", "K=Ann\nKX=Bob", "sales", QStringLiteral("[]"));
    row("dealers with numbers", "U1=Acme\nV1=77\nU2=Best", "dealers",
        QStringLiteral(R"([{"name":"Acme","number":"77"},{"name":"Best","number":""}])"));
    row("lower-case dealer line ignored", "u1=Acme", "dealers", QStringLiteral("[]"));
}

void OrderFileReaderTest::header() {
    QFETCH(QString, text);
    QFETCH(QString, key);
    QFETCH(QString, expected);
    OrderData order;
    readOrderHeaderLines(text.split(QLatin1Char('\n')), order);
    QCOMPARE(orderValue(order, key), expected);
}

void OrderFileReaderTest::charges_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("version4");
    QTest::addColumn<QString>("charges");
    QTest::addColumn<QString>("shippingNotes");

    const auto row = [](const char *name, const char *text, bool version4, const char *charges,
                        const QString &notes) {
        QTest::newRow(name) << QString::fromLatin1(text) << version4 << QString::fromLatin1(charges)
                            << notes;
    };
    row("named charges", "DE=100\nSH=50\nIN=25", false,
        R"([{"amount":"100","name":"Design","secondText":""},)"
        R"({"amount":"50","name":"Shipping","secondText":""},)"
        R"({"amount":"25","name":"Install","secondText":""}])",
        QString());
    row("lower-case design tag counts", "de=100", false,
        R"([{"amount":"100","name":"Design","secondText":""}])", QString());
    row("X line without equals takes a slot", "X1 5\nx2=7", false,
        R"([{"amount":"","name":"","secondText":""},{"amount":"7","name":"","secondText":""}])",
        QString());
    row("classic shipping notes keep repeats", "SN=a\nsn=a", false, "[]", QStringLiteral("a\ra"));
    row("version 4 charge", "A1=125.00\nA1N=Freight\nA1S=text", true,
        R"([{"amount":"125.00","name":"Freight: ","secondText":"text: "}])", QString());
    row("version 4 gap", "A2=10", true,
        R"([{"amount":"","name":"","secondText":""},{"amount":"10","name":"","secondText":""}])",
        QString());
    row("version 4 lower number shrinks", "A2=10\nA1=5", true,
        R"([{"amount":"5","name":"","secondText":""}])", QString());
    row("version 4 digit 0 writes the last entry", "A2=10\nA0=3", true,
        R"([{"amount":"","name":"","secondText":""},{"amount":"3","name":"","secondText":""}])",
        QString());
    row("version 4 digit 0 first is nothing", "A0=3", true, "[]", QString());
    row("version 4 name is case-sensitive", "A1n=Freight", true,
        R"([{"amount":"","name":"","secondText":""}])", QString());
    row("version 4 ignores classic tags", "DE=100\nX1=5\nAB=me", true, "[]", QString());
    row("version 4 shipping notes skip repeats", "SN=dock\nSN=dock\nSN=ock", true, "[]",
        QStringLiteral("dock"));
    row("classic file ignores A lines", "A1=5", false, "[]", QString());
}

void OrderFileReaderTest::charges() {
    QFETCH(QString, text);
    QFETCH(bool, version4);
    QFETCH(QString, charges);
    QFETCH(QString, shippingNotes);
    OrderData order;
    readAdditionalChargeLines(text.split(QLatin1Char('\n')), version4, order);
    QCOMPARE(orderValue(order, QStringLiteral("charges")), charges);
    QCOMPARE(order.shippingNotes, shippingNotes);
}

void OrderFileReaderTest::chargeSum_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("sum");
    QTest::addColumn<int>("error");

    QTest::newRow("no charges") << QString() << 0.0 << 0;
    QTest::newRow("trimmed and summed") << QStringLiteral("DE= 100 \nSH=50.5") << 150.5 << 0;
    QTest::newRow("thousands") << QStringLiteral("DE=1,000.25") << 1000.25 << 0;
    QTest::newRow("not a number") << QStringLiteral("DE=abc") << 0.0 << 13;
    QTest::newRow("empty amount") << QStringLiteral("DE=100\nX1") << 0.0 << 13;
    QTest::newRow("overflow") << QStringLiteral("DE=1e400") << 0.0 << 6;
}

void OrderFileReaderTest::chargeSum() {
    QFETCH(QString, text);
    QFETCH(double, sum);
    QFETCH(int, error);
    OrderData order;
    readAdditionalChargeLines(text.split(QLatin1Char('\n')), false, order);
    try {
        QCOMPARE(sumOfAdditionalCharges(order), sum);
        QCOMPARE(error, 0);
    } catch (const RuntimeError &e) {
        QCOMPARE(e.number(), error);
    }
}

void OrderFileReaderTest::version_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("version4");

    QTest::newRow("first line") << QByteArray("[CIF V4]\r\nCO=1\r\n") << true;
    QTest::newRow("later line with blanks") << QByteArray("CO=1\n  [CIF V4] \n") << true;
    QTest::newRow("lower case") << QByteArray("[cif v4]\n") << false;
    QTest::newRow("absent") << QByteArray("CO=1\n") << false;
    QTest::newRow("empty file") << QByteArray() << false;
}

void OrderFileReaderTest::version() {
    QFETCH(QByteArray, bytes);
    QFETCH(bool, version4);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("job.cif"));
    testsupport::writeBytes(path, bytes);
    QCOMPARE(isCifVersion4(path), version4);
}

void OrderFileReaderTest::loadMissingAndPresentFile() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("job.cif"));
    ScriptedPrompter prompter;
    OrderData order;
    order.header.purchaseOrderNumber = QStringLiteral("stale");
    loadOrderFile(path, order, prompter);
    QVERIFY(!order.present);
    QVERIFY(order.header.purchaseOrderNumber.isEmpty());
    QVERIFY_THROWS_EXCEPTION(RuntimeError, isCifVersion4(path));

    testsupport::writeBytes(path, "[CIF V4]\r\nCO=PO-7\r\nA1=12.50\r\nA1N=Freight\r\nDE=99\r\n");
    loadOrderFile(path, order, prompter);
    QVERIFY(order.present);
    QVERIFY(order.version4);
    QCOMPARE(order.header.purchaseOrderNumber, QStringLiteral("PO-7"));
    QCOMPARE(order.chargeCount(), 1);
    QCOMPARE(order.charges[0].name, QStringLiteral("Freight: "));
    QVERIFY(prompter.calls().isEmpty());

    // A folder where the file should be is no order file.
    QDir(dir.path()).mkdir(QStringLiteral("folder.cif"));
    loadOrderFile(dir.filePath(QStringLiteral("folder.cif")), order, prompter);
    QVERIFY(!order.present);
}

void OrderFileReaderTest::fillOrderField_data() {
    QTest::addColumn<QString>("caption");
    QTest::addColumn<bool>("present");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("value");

    const QString untouched = QStringLiteral("<old>");
    const auto row = [](const char *caption, bool present, const QString &label,
                        const QString &value) {
        QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(QLatin1String(caption)).arg(present)))
            << QString::fromLatin1(caption) << present << label << value;
    };
    row("P. O. Number", true, QStringLiteral("P. O. Number:"), QStringLiteral("PO-1"));
    row("P. O. Number", false, QStringLiteral("P. O. Number:"), untouched);
    row("P. O. Type", true, QStringLiteral("P. O. Type:"), QStringLiteral("Std"));
    row("Customer P. O.", true, QStringLiteral("Customer P. O.:"), QStringLiteral("C-9"));
    row("Order Type", true, QStringLiteral("Order Type:"), QStringLiteral("Rush"));
    row("Authorized By", true, QStringLiteral("Authorized By:"), QStringLiteral("Kim"));
    row("Contract Number", true, QStringLiteral("Contract Number:"), QStringLiteral("K-1"));
    row("Contract Rev", true, QStringLiteral("Contract Rev:"), QStringLiteral("B"));
    row("Ship Date", true, QStringLiteral("Requested Ship Date:"), QStringLiteral("03-15-2024"));
    row("Ship Date", false, QStringLiteral("Requested Ship Date:"), untouched);
    row("Install Date", true, QStringLiteral("Requested Install Date:"),
        QStringLiteral("2024-04-01"));
    row("Direct Bill Type", false, QStringLiteral("Direct Bill Type:"), untouched);
    row("Sold Company", true, untouched, QStringLiteral("Acme"));
    row("Sold Company", false, untouched, QStringLiteral("Acme"));
    row("Sold Street Address", true, untouched, QStringLiteral("1 Main\rSuite 2"));
    row("Ship Street Address", true, untouched, QStringLiteral("\rDock 4"));
    row("Ship Phone", true, untouched, QStringLiteral("555"));
    row("Sold Fax", true, untouched, QStringLiteral("556"));
    row("Sales Person", true, QStringLiteral("Sales: "), untouched);
    row("Sales Number", true, QStringLiteral("Number: "), untouched);
    row("Dealer", true, QStringLiteral("Dealer: "), untouched);
    row("Dealer Number", true, QStringLiteral("Number: "), untouched);
    row("Comments", true, untouched, QStringLiteral("call first"));
    row("Part Number", true, untouched, untouched);
}

void OrderFileReaderTest::fillOrderField() {
    QFETCH(QString, caption);
    QFETCH(bool, present);
    QFETCH(QString, label);
    QFETCH(QString, value);
    OrderData order;
    readOrderHeaderLines(
        lines("CO=PO-1\nPT=Std\nCP=C-9\nOT=Rush\nAB=Kim\nPA=K-1\nPR=B\n"
              "RD=20240315\nRI=2024-04-01\nDB=Net\nD1=Acme\nD2=1 Main \nD4=Suite 2\n"
              "P3=Dock 4\nPP=555\nDF=556\nTN=call first"),
        order);
    OrderFieldLists lists;
    lists.labels.assign(50, QStringLiteral("<old>"));
    lists.values.assign(50, QStringLiteral("<old>"));
    tavrel::fillOrderField(lists, order, present, 5, caption);
    QCOMPARE(int(lists.labels.size()), OrderFieldLists::Slots + 1);
    QCOMPARE(int(lists.values.size()), OrderFieldLists::Slots + 1);
    QCOMPARE(lists.labels[5], label);
    QCOMPARE(lists.values[5], value);
    QCOMPARE(lists.labels[4], QStringLiteral("<old>")); // contents kept on resizing
}

void OrderFileReaderTest::fillOrderFieldOutsideSlots() {
    OrderFieldLists lists;
    const OrderData order;
    tavrel::fillOrderField(lists, order, false, 137, QStringLiteral("P. O. Number"));
    QCOMPARE(lists.labels[137], QStringLiteral("P. O. Number:"));
    QVERIFY_THROWS_EXCEPTION(
        RuntimeError, tavrel::fillOrderField(lists, order, false, 0, QStringLiteral("Comments")));
    QVERIFY_THROWS_EXCEPTION(
        RuntimeError, tavrel::fillOrderField(lists, order, false, 138, QStringLiteral("Comments")));
}

void OrderFileReaderTest::formatRequestedDate_data() {
    QTest::addColumn<QString>("date");
    QTest::addColumn<QString>("expected");
    QTest::newRow("eight digits") << QStringLiteral("20240315") << QStringLiteral("03-15-2024");
    QTest::newRow("with hyphens") << QStringLiteral("2024-03-15") << QStringLiteral("2024-03-15");
    QTest::newRow("any hyphen") << QStringLiteral("-") << QStringLiteral("-");
    QTest::newRow("short") << QStringLiteral("2024031") << QStringLiteral("03-1-2024");
    QTest::newRow("empty") << QString() << QStringLiteral("--");
}

void OrderFileReaderTest::formatRequestedDate() {
    QFETCH(QString, date);
    QFETCH(QString, expected);
    QCOMPARE(tavrel::formatRequestedDate(date), expected);
}

TAVREL_TEST(OrderFileReaderTest)
#include "OrderFileReaderTest.moc"
