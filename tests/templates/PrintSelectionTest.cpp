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
    void defaultsAreWrittenBack();
    void storedValuesAreKept();
    void failedWriteBackTurnsFlagsOff();
    void checkOrder_data();
    void checkOrder();
    void checkMessagesText();
    void checkShowsExclamation();
    void templateDirectory_data();
    void templateDirectory();
};

void PrintSelectionTest::groupFileGolden() {
    TemplateGroup group;
    group.coverPrintable = 1;
    group.bodyPrintable = 0;
    group.summaryPrintable = 1;
    group.coverTemplate = QStringLiteral("/home/dealer/Print Templates/Classic.cov");
    group.bodyTemplate = QStringLiteral("C:\\Templates\\Caf\u00e9 Customer.cst");
    group.summaryTemplate.clear();
    const QString mismatch = testsupport::compareWithGolden(GroupFile::bytes(group),
                                                            QStringLiteral("templates/sample.grp"));
    QVERIFY2(mismatch.isEmpty(), qPrintable(mismatch));
}

void PrintSelectionTest::groupFileRoundTrip() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("office.grp"));
    TemplateGroup group;
    group.bodyPrintable = 1;
    group.coverTemplate = dir.filePath(QStringLiteral("gone.cov")); // need not exist
    group.bodyTemplate = QStringLiteral("relative\\body.cst");
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
    const TemplateGroup group = GroupFile::read(path);
    QCOMPARE(group.coverPrintable, qint16(1));
    QCOMPARE(group.bodyPrintable, qint16(0));    // first occurrence wins
    QCOMPARE(group.summaryPrintable, qint16(2)); // integers round half to even
    QCOMPARE(group.bodyTemplate, QStringLiteral("b.cst"));
    QCOMPARE(group.coverTemplate, QString());

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

void PrintSelectionTest::defaultsAreWrittenBack() {
    QTemporaryDir dir;
    const QString job = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(job, "[User Preferences]\r\nCompany Name=Acme\r\n");
    const PrintState state = PrintSelection::read(job, QStringLiteral("/opt/t"));
    QCOMPARE(state.coverTemplate, QStringLiteral("/opt/t/Classic.cov"));
    QCOMPARE(state.bodyTemplate, QStringLiteral("/opt/t/Classic Customer.cst"));
    QCOMPARE(state.summaryTemplate, QStringLiteral("/opt/t/Classic Customer.sum"));
    QCOMPARE(state.coverPrintable, QStringLiteral("1"));
    QCOMPARE(state.bodyPrintable, QStringLiteral("1"));
    QCOMPARE(state.summaryPrintable, QStringLiteral("1"));
    const QString mismatch = testsupport::compareWithGolden(
        testsupport::readBytes(job), QStringLiteral("templates/defaults-written.ini"));
    QVERIFY2(mismatch.isEmpty(), qPrintable(mismatch));
}

void PrintSelectionTest::storedValuesAreKept() {
    QTemporaryDir dir;
    const QString job = dir.filePath(QStringLiteral("job.ini"));
    const QByteArray before = "[Printer]\r\nCover Template=a.cov\r\nBody Template=b.cst\r\n"
                              "Summary Template=c.sum\r\nCover Printable=0\r\n"
                              "Body Printable=False\r\nSummary Printable=1\r\n";
    testsupport::writeBytes(job, before);
    const PrintState state = PrintSelection::read(job, dir.path());
    QCOMPARE(state.coverTemplate, QStringLiteral("a.cov"));
    QCOMPARE(state.bodyPrintable, QStringLiteral("False")); // taken as it stands
    QCOMPARE(testsupport::readBytes(job), before);          // nothing written
}

void PrintSelectionTest::failedWriteBackTurnsFlagsOff() {
    // A job file in a folder that does not exist: nothing can be written back, so the second
    // read finds the flags still empty and turns them to "0".
    QTemporaryDir dir;
    const QString job = dir.filePath(QStringLiteral("gone/job.ini"));
    const PrintState state = PrintSelection::read(job, QStringLiteral("/t"));
    QCOMPARE(state.coverTemplate, QStringLiteral("/t/Classic.cov"));
    QCOMPARE(state.coverPrintable, QStringLiteral("0"));
    QCOMPARE(state.bodyPrintable, QStringLiteral("0"));
    QCOMPARE(state.summaryPrintable, QStringLiteral("0"));
    QCOMPARE(PrintSelection::checkMessage(state),
             QStringLiteral("At least select one item to be printable."));
    QVERIFY(!QDir(dir.filePath(QStringLiteral("gone"))).exists());
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
    const PrintState state{resolve(paths[0]), resolve(paths[1]), resolve(paths[2]),
                           flags[0],          flags[1],          flags[2]};
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
    const QList<PrintState> states = {
        {{}, {}, {}, on, on, on},       {some, some, some, off, off, off},
        {none, some, some, on, on, on}, {some, none, some, on, on, on},
        {some, some, none, on, on, on},
    };
    QStringList messages;
    for (const PrintState &state : states)
        messages << PrintSelection::checkMessage(state);
    const QString mismatch =
        testsupport::compareWithGolden(messages.join(QLatin1Char('\n')).toUtf8() + '\n',
                                       QStringLiteral("templates/check-messages.txt"));
    QVERIFY2(mismatch.isEmpty(), qPrintable(mismatch));
}

void PrintSelectionTest::checkShowsExclamation() {
    QTemporaryDir dir;
    const QString job = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(job, "[Printer]\r\nBody Template=missing.cst\r\n");
    ScriptedPrompter prompter;
    QVERIFY(!PrintSelection::check(job, dir.path(), prompter));
    QCOMPARE(prompter.calls().size(), 1);
    const ScriptedPrompter::Call &call = prompter.calls().first();
    QCOMPARE(call.text, QStringLiteral("Cover Page Template Not Found."));
    QCOMPARE(call.title, QString());
    QCOMPARE(call.icon, MessageIcon::Exclamation);
    QCOMPARE(call.buttons, MessageButtons::Ok);
    // The defaults stay written even though the check failed.
    QCOMPARE(ReadIniValue(QStringLiteral("Printer"), QStringLiteral("Summary Printable"), job),
             QStringLiteral("1"));
    QCOMPARE(ReadIniValue(QStringLiteral("Printer"), QStringLiteral("Body Template"), job),
             QStringLiteral("missing.cst"));

    // With the Classic templates beside the executables the defaults print.
    const QString classic =
        QStringLiteral(TAVREL_SOURCE_DIR) + QStringLiteral("/resources/Print Templates");
    const QString fresh = dir.filePath(QStringLiteral("fresh.ini"));
    prompter.clear();
    QVERIFY(PrintSelection::check(fresh, classic, prompter));
    QVERIFY(prompter.calls().isEmpty());
}

void PrintSelectionTest::templateDirectory_data() {
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("expected"); // "@" stands for the job's folder, "!" for the exe's
    QTest::newRow("empty") << QByteArray("") << "!/Print Templates";
    QTest::newRow("missing") << QByteArray() << "!/Print Templates";
    QTest::newRow("absolute") << QByteArray("/srv/t/") << "/srv/t";
    QTest::newRow("relative with backslashes")
        << QByteArray("sub\\Print Templates") << "@/sub/Print Templates";
    QTest::newRow("dot dot") << QByteArray("../t") << "@/../t";
}

void PrintSelectionTest::templateDirectory() {
    QFETCH(QByteArray, value);
    QFETCH(QString, expected);
    QTemporaryDir dir;
    const QString folder = dir.filePath(QStringLiteral("jobs"));
    QDir().mkpath(folder);
    const QString job = folder + QStringLiteral("/job.ini");
    testsupport::writeBytes(job, value.isNull()
                                     ? QByteArray("[Printer]\r\n")
                                     : "[Printer]\r\nTemplate Directory=" + value + "\r\n");
    expected.replace(QLatin1Char('@'), folder);
    expected.replace(QLatin1Char('!'), QStringLiteral("/exe"));
    QCOMPARE(PrintSelection::templateDirectory(job, QStringLiteral("/exe")),
             QDir::cleanPath(expected));
}

TAVREL_TEST(PrintSelectionTest)
#include "PrintSelectionTest.moc"
