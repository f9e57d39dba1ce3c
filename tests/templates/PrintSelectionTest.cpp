#include "templates/PrintSelection.h"
#include "base/IniFile.h"
#include "base/RuntimeError.h"
#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "templates/GroupFile.h"
#include "templates/TemplateKind.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

class PrintSelectionTest : public QObject {
    Q_OBJECT

private slots:
    void groupFileGolden();
    void groupFileRoundTrip();
    void groupFileReadRules();
    void groupToolTip();
    void checkOrder_data();
    void checkOrder();
    void checkMessagesText();
};

void PrintSelectionTest::groupFileGolden() {
    ReportSelection group;
    group.printable = {"1", "0", "1"};
    group.templates[0] = QStringLiteral("/home/dealer/Print Templates/Classic.cov");
    group.templates[1] = QStringLiteral("C:\\Templates\\Caf\u00e9 Customer.cst");
    const QString mismatch = testsupport::compareWithGolden(GroupFile::bytes(group),
                                                            QStringLiteral("templates/sample.grp"));
    QVERIFY2(mismatch.isEmpty(), qPrintable(mismatch));
}

void PrintSelectionTest::groupFileRoundTrip() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("office.grp"));
    ReportSelection group;
    group.printable = {"0", "1", "0"};
    group.templates[0] = dir.filePath(QStringLiteral("gone.cov")); // need not exist
    group.templates[1] = QStringLiteral("relative\\body.cst");
    GroupFile::write(path, group);
    QCOMPARE(GroupFile::read(path), group);
    QVERIFY(isGroupPath(path));
}

void PrintSelectionTest::groupFileReadRules() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("hand.grp"));
    testsupport::writeBytes(path, "[file path]\nbody template=b.cst\n[PRINT STATE]\n"
                                  "cover printable= 1 \nBody Printable=0\nSummary Printable=1.5\n"
                                  "Body Printable=1\n");
    const ReportSelection group = GroupFile::read(path);
    QCOMPARE(group.printable[0], QStringLiteral("1"));
    QCOMPARE(group.printable[1], QStringLiteral("0")); // first occurrence wins
    QCOMPARE(group.printable[2], QStringLiteral("1")); // 1.5 rounds half to even, to 2: ticked
    QCOMPARE(group.templates[1], QStringLiteral("b.cst"));
    QCOMPARE(group.templates[0], QString());
    // A zero that rounds from a fraction leaves its row unticked.
    testsupport::writeBytes(path, "[Print State]\r\nCover Printable=0.5\r\nBody Printable=0\r\n"
                                  "Summary Printable=0\r\n");
    QCOMPARE(GroupFile::read(path).printable[0], QStringLiteral("0"));

    // A printable value that is not a number is a type mismatch the caller reports.
    testsupport::writeBytes(path, "[Print State]\r\nCover Printable=True\r\n");
    try {
        GroupFile::read(path);
        QFAIL("no error");
    } catch (const RuntimeError &error) {
        QCOMPARE(error.number(), 13);
    }
}

void PrintSelectionTest::groupToolTip() {
    QCOMPARE(GroupFile::loadedToolTip(QStringLiteral("C:\\T\\Office.grp")),
             QStringLiteral("\"Office.grp\" is currently loaded. Load another?"));
    QCOMPARE(GroupFile::loadedToolTip(QStringLiteral("/t/My Group.grp")),
             QStringLiteral("\"My Group.grp\" is currently loaded. Load another?"));
    QVERIFY(!isGroupPath(QStringLiteral("x.GRP")));
}

void PrintSelectionTest::checkOrder_data() {
    QTest::addColumn<QString>("pathList"); // cover, body, summary; "+" marks an existing file
    QTest::addColumn<QString>("flagList");
    QTest::addColumn<QString>("message");
    const char *const allOn = "1|1|1";
    const char *const allOff = "0|0|0";
    QTest::newRow("no templates, before the flags") << "||" << allOff
                                                    << "No valid templates selected.\rGo to "
                                                       "\"Custom Layout Setup\"  to select a "
                                                       "valid template.";
    QTest::newRow("nothing printable, before missing files")
        << "gone.cov||" << allOff << "At least select one item to be printable.";
    QTest::newRow("empty flags are not \"0\"") << "+a.cov||"
                                               << "||"
                                               << "";
    QTest::newRow("missing cover even when not printable") << "gone.cov|+b.cst|+c.sum"
                                                           << "0|1|1"
                                                           << "Cover Page Template Not Found.";
    QTest::newRow("missing body") << "+a.cov|gone.cst|gone.sum" << allOn
                                  << "Custom Template Not Found.";
    QTest::newRow("missing summary")
        << "|+b.cst|gone.sum" << allOn << "Summary Template Not Found.";
    QTest::newRow("a folder is no file") << "+a.cov|+|" << allOn << "Custom Template Not Found.";
    QTest::newRow("all there") << "+a.cov|+b.cst|+c.sum" << allOn << "";
    QTest::newRow("only a body") << "|+b.cst|"
                                 << "0|1|0"
                                 << "";
}

void PrintSelectionTest::checkOrder() {
    QFETCH(QString, pathList);
    QFETCH(QString, flagList);
    const QStringList paths = pathList.split(QLatin1Char('|'));
    const QStringList flags = flagList.split(QLatin1Char('|'));
    QFETCH(QString, message);
    QTemporaryDir dir;
    const auto resolve = [&dir](const QString &path) -> QString {
        if (path.isEmpty())
            return {};
        if (path == QLatin1String("+"))
            return dir.path();
        if (path.startsWith(QLatin1Char('+'))) {
            const QString file = dir.filePath(path.mid(1));
            testsupport::writeBytes(file, "[Other Info]\r\n");
            return file;
        }
        return dir.filePath(path);
    };
    const ReportSelection state{{resolve(paths[0]), resolve(paths[1]), resolve(paths[2])},
                                {flags[0], flags[1], flags[2]}};
    QCOMPARE(PrintSelection::checkMessage(state), message);
}

void PrintSelectionTest::checkMessagesText() {
    // Every refusal, byte for byte, in the order the check tries them.
    QTemporaryDir dir;
    const QString none = dir.filePath(QStringLiteral("none"));
    const QString some = dir.filePath(QStringLiteral("some"));
    testsupport::writeBytes(some, "x");
    const QString off = QStringLiteral("0");
    const QString on = QStringLiteral("1");
    const QList<ReportSelection> states = {
        {{}, {on, on, on}},
        {{some, some, some}, {off, off, off}},
        {{none, some, some}, {on, on, on}},
        {{some, none, some}, {on, on, on}},
        {{some, some, none}, {on, on, on}},
    };
    QStringList messages;
    for (const ReportSelection &state : states)
        messages << PrintSelection::checkMessage(state);
    const QString mismatch =
        testsupport::compareWithGolden(messages.join(QLatin1Char('\n')).toUtf8() + '\n',
                                       QStringLiteral("templates/check-messages.txt"));
    QVERIFY2(mismatch.isEmpty(), qPrintable(mismatch));
}

TAVREL_TEST(PrintSelectionTest)
#include "PrintSelectionTest.moc"
