#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "shell/platform/FileTypeRegistration.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTest>

using namespace tavrel;

// --version and --help of both programs, tavrel-cli's help command, and the installed
// shared-mime-info package, which must say what the per-start registration says.
class ProgramOptionsTest : public QObject {
    Q_OBJECT

private slots:
    void options_data();
    void options();
    void helpCommandIsCommandHelp_data();
    void helpCommandIsCommandHelp();
    void installedMimePackageMatchesRegistration();
};

namespace {

struct Result {
    int exitCode = -1;
    QByteArray out;
};

Result run(const QString &program, const QStringList &args) {
    QProcess process;
    process.start(QStringLiteral(TAVREL_BIN_DIR "/") + program, args);
    Result result;
    if (!process.waitForFinished(30000)) {
        process.kill();
        process.waitForFinished();
        return result;
    }
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.out = process.readAllStandardOutput();
    return result;
}

} // namespace

void ProgramOptionsTest::options_data() {
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("pattern"); // the whole standard output
    const QString version = QStringLiteral("\\d+\\.\\d+\\.\\d+\\n");
    QTest::newRow("tavrel --version") << "tavrel" << QStringList{"--version"} << 0
                                      << QStringLiteral("tavrel \\(Tavrel\\) ") + version;
    QTest::newRow("tavrel --help")
        << "tavrel" << QStringList{"--help"} << 0
        << "Usage: tavrel JOBFILE\\n(.|\\n)*exactly one argument(.|\\n)*";
    QTest::newRow("tavrel-cli --version") << "tavrel-cli" << QStringList{"--version"} << 0
                                          << QStringLiteral("tavrel-cli \\(Tavrel\\) ") + version;
    QTest::newRow("tavrel-cli --help") << "tavrel-cli" << QStringList{"--help"} << 0
                                       << "Usage: tavrel-cli COMMAND(.|\\n)*--version(.|\\n)*";
    QTest::newRow("tavrel-cli help")
        << "tavrel-cli" << QStringList{"help"} << 0 << "Usage: tavrel-cli COMMAND(.|\\n)*";
    QTest::newRow("no command is wrong usage")
        << "tavrel-cli" << QStringList{} << 2 << "Usage: tavrel-cli COMMAND(.|\\n)*";
    QTest::newRow("help on an unknown command") << "tavrel-cli" << QStringList{"help", "frobnicate"}
                                                << 2 << "Usage: tavrel-cli COMMAND(.|\\n)*";
}

void ProgramOptionsTest::options() {
    QFETCH(QString, program);
    QFETCH(QStringList, args);
    QFETCH(int, exitCode);
    QFETCH(QString, pattern);
    const Result result = run(program, args);
    QCOMPARE(result.exitCode, exitCode);
    const QString out = QString::fromUtf8(result.out);
    QVERIFY2(QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(out).hasMatch(),
             qPrintable(out));
}

void ProgramOptionsTest::helpCommandIsCommandHelp_data() {
    QTest::addColumn<QString>("command");
    for (const char *command : {"settings", "spec", "template", "check-print", "render"})
        QTest::newRow(command) << QString::fromLatin1(command);
}

void ProgramOptionsTest::helpCommandIsCommandHelp() {
    QFETCH(QString, command);
    const Result viaHelp = run(QStringLiteral("tavrel-cli"), {QStringLiteral("help"), command});
    const Result viaOption = run(QStringLiteral("tavrel-cli"), {command, QStringLiteral("--help")});
    QCOMPARE(viaHelp.exitCode, 0);
    QCOMPARE(viaOption.exitCode, 0);
    QVERIFY(viaHelp.out.startsWith("Usage: tavrel-cli " + command.toLatin1()));
    QCOMPARE(viaHelp.out, viaOption.out);
}

void ProgramOptionsTest::installedMimePackageMatchesRegistration() {
    QCOMPARE(
        testsupport::readBytes(testsupport::sourcePath(QStringLiteral("packaging/tavrel.xml"))),
        FileTypeRegistration::mimePackage());
}

TAVREL_TEST(ProgramOptionsTest)
#include "ProgramOptionsTest.moc"
