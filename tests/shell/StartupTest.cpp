#include "shell/Startup.h"
#include "base/ScriptedPrompter.h"
#include "common/FileSizeLimit.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"

#include "base/IniFile.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

using namespace tavrel;
using testsupport::FileSizeLimit;

namespace {

// A folder whose path is `length` characters or more, made and entered a component at a time
// (the system refuses such paths whole); the working folder is restored and the folder removed
// when the object goes.
class DeepFolder {
public:
    explicit DeepFolder(int length)
        : m_previous(QDir::currentPath()) {
        QByteArray path = QFile::encodeName(m_base.path());
        QVERIFY(::chdir(path.constData()) == 0);
        const QByteArray component(200, 'd');
        while (path.size() < length) {
            QVERIFY(::mkdir(component.constData(), 0700) == 0);
            QVERIFY(::chdir(component.constData()) == 0);
            path += '/' + component;
        }
    }
    ~DeepFolder() {
        QDir::setCurrent(m_previous);
        // rm works its way down by relative steps, as deep folders need.
        QProcess::execute(QStringLiteral("rm"), {QStringLiteral("-rf"), m_base.path()});
    }

private:
    QTemporaryDir m_base;
    QString m_previous;
};

QString startupReport(int number, const QString &description) {
    return QStringLiteral("An Error Occured at - Main.\r\n\r\nError Number: %1\r\n"
                          "Error Description: %2")
        .arg(number)
        .arg(description);
}

} // namespace

// Path resolution and run-mode dispatch of start-up.
class StartupTest : public QObject {
    Q_OBJECT

private slots:
    void activeDocument_data();
    void activeDocument();
    void noActiveDocument_data();
    void noActiveDocument();
    void emptyTemplateDirectoryIsWrittenBack();
    void failedWriteBackIsReported_data();
    void failedWriteBackIsReported();
    void unresolvablePathsEndStartup_data();
    void unresolvablePathsEndStartup();
    void templateDirectorySplit();
    void runMode_data();
    void runMode();
    void orderFileVersion_data();
    void orderFileVersion();
};

void StartupTest::activeDocument_data() {
    QTest::addColumn<QString>("activeDocument");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("cif");
    QTest::newRow("windows path") << "C:\\Projects\\Harbor\\Office.sp4"
                                  << "C:\\Projects\\Harbor\\"
                                  << "Office"
                                  << "C:\\Projects\\Harbor\\Office.cif";
    QTest::newRow("no extension still loses four") << "C:\\Docs\\report"
                                                   << "C:\\Docs\\"
                                                   << "re"
                                                   << "C:\\Docs\\re.cif";
    QTest::newRow("short name") << "C:\\Docs\\ab"
                                << "C:\\Docs\\"
                                << ""
                                << "C:\\Docs\\.cif";
    QTest::newRow("absolute unix") << "/srv/jobs/Plan A.sp4"
                                   << "/srv/jobs/"
                                   << "Plan A"
                                   << "/srv/jobs/Plan A.cif";
    QTest::newRow("empty") << ""
                           << ""
                           << ""
                           << ".cif";
}

void StartupTest::activeDocument() {
    QFETCH(QString, activeDocument);
    QFETCH(QString, folder);
    QFETCH(QString, name);
    QFETCH(QString, cif);
    QTemporaryDir dir;
    const QString job = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(job, "[Printer]\r\nTempPrintDocument=/tmp/x.sif\r\nActiveDocument=" +
                                     activeDocument.toLatin1() +
                                     "\r\nTemplate Directory=" + dir.path().toLatin1() + "/T\r\n");
    ScriptedPrompter prompter;
    AppContext context;
    QVERIFY(Startup::resolvePaths(context, job, dir.path(), prompter));
    QCOMPARE(context.paths.activeDocumentFolder, folder);
    QCOMPARE(context.paths.activeDocumentName, name);
    QCOMPARE(context.paths.cifPath, cif);
    QVERIFY(prompter.calls().isEmpty());
}

void StartupTest::noActiveDocument_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("quotePath");
    QTest::newRow("missing key") << QByteArray("[Printer]\r\nFunction=1\r\n") << false;
    QTest::newRow("empty key") << QByteArray("[Printer]\r\nTempPrintDocument=\r\n") << false;
    QTest::newRow("missing file") << QByteArray() << false;
    // The command line is the path as it stands: quotes make it a different, missing file.
    QTest::newRow("quoted command line")
        << QByteArray("[Printer]\r\nTempPrintDocument=a.sif\r\n") << true;
}

void StartupTest::noActiveDocument() {
    QFETCH(QByteArray, content);
    QFETCH(bool, quotePath);
    QTemporaryDir dir;
    QString job = dir.filePath(QStringLiteral("job.ini"));
    if (!content.isEmpty())
        testsupport::writeBytes(job, content);
    if (quotePath)
        job = QLatin1Char('"') + job + QLatin1Char('"');
    ScriptedPrompter prompter;
    AppContext context;
    QVERIFY(!Startup::resolvePaths(context, job, dir.path(), prompter));
    QCOMPARE(prompter.messages(), QStringList{QStringLiteral("No Active Document Found.")});
    QCOMPARE(prompter.calls().first().title, QString());
    QCOMPARE(prompter.calls().first().icon, MessageIcon::None);
}

void StartupTest::emptyTemplateDirectoryIsWrittenBack() {
    QTemporaryDir dir;
    const QString job = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(job, "[Printer]\r\nTempPrintDocument=a.sif\r\nTemplate Directory=\r\n");
    const QString exeFolder = dir.filePath(QStringLiteral("bin"));
    QDir().mkpath(exeFolder);
    ScriptedPrompter prompter;
    AppContext context;
    QVERIFY(Startup::resolvePaths(context, job, exeFolder, prompter));
    const QString expected = exeFolder + QStringLiteral("/Print Templates");
    QCOMPARE(testsupport::readBytes(job),
             QByteArray("[Printer]\r\nTempPrintDocument=a.sif\r\nTemplate Directory=") +
                 expected.toLatin1() + "\r\n");
    QCOMPARE(context.paths.templateRoot, exeFolder);
    QCOMPARE(context.paths.templateFolder, expected);
    QCOMPARE(context.paths.sifPath, dir.filePath(QStringLiteral("a.sif")));
}

void StartupTest::failedWriteBackIsReported_data() {
    QTest::addColumn<QString>("key");
    QTest::newRow("template directory") << "Template Directory";
    QTest::newRow("printer name") << "PrinterDeviceName";
}

// A full disk (here a file-size limit) stops start-up's write-back: the job file stays as it
// was, the failure is reported like any failed write, and start-up goes on.
void StartupTest::failedWriteBackIsReported() {
    QFETCH(QString, key);
    QTemporaryDir dir;
    const QString job = dir.filePath(QStringLiteral("job.ini"));
    const QByteArray before =
        key == QLatin1String("PrinterDeviceName")
            ? "[Printer]\r\nTempPrintDocument=a.sif\r\nTemplate Directory=T\r\n"
              "PrinterDeviceName=G\r\n"
            : "[Printer]\r\nTempPrintDocument=a.sif\r\nTemplate Directory=\r\n";
    testsupport::writeBytes(job, before);
    ScriptedPrompter prompter;
    AppContext context;
    {
        const FileSizeLimit limit(rlim_t(before.size()));
        QVERIFY(Startup::resolvePaths(context, job, dir.path(), prompter));
        Startup::readPrinterSettings(context, PrinterList{QStringLiteral("PDF"), {}}, prompter);
    }
    QCOMPARE(testsupport::readBytes(job), before);
    QCOMPARE(prompter.messages().size(), 1);
    QVERIFY2(prompter.messages().first().startsWith(startupReport(61, QString())),
             qPrintable(prompter.messages().first()));
    QCOMPARE(prompter.calls().first().title, QStringLiteral("Tavrel - Error"));
    QCOMPARE(prompter.calls().first().icon, MessageIcon::Exclamation);
    // Start-up goes on with what it resolved.
    QCOMPARE(context.printer.printerDeviceName, QStringLiteral("PDF"));
    QVERIFY(context.paths.templateFolder.endsWith(key == QLatin1String("PrinterDeviceName")
                                                      ? QStringLiteral("/T")
                                                      : QStringLiteral("/Print Templates")));
}

void StartupTest::unresolvablePathsEndStartup_data() {
    QTest::addColumn<int>("depth"); // characters of the working folder
    QTest::addColumn<QString>("sif");
    QTest::addColumn<QString>("templates");
    QTest::addColumn<QString>("reported"); // key and value named in the report
    const QString longName = QString(250, QLatin1Char('t'));
    QTest::newRow("working folder beyond the limit, relative template folder")
        << 4400 << "/tmp/x.sif"
        << "tpl"
        << "Template Directory: tpl";
    QTest::newRow("working folder beyond the limit, relative SIF file")
        << 4400 << "a.sif"
        << "/tmp/T"
        << "TempPrintDocument: a.sif";
    QTest::newRow("template folder beyond the limit")
        << 3900 << "/tmp/x.sif" << longName << "Template Directory: " + longName;
}

// A job file read from a folder deeper than the system's path limit: paths that would resolve
// against its folder cannot be resolved. Start-up reports it and ends, and makes no folder.
void StartupTest::unresolvablePathsEndStartup() {
    QFETCH(int, depth);
    QFETCH(QString, sif);
    QFETCH(QString, templates);
    QFETCH(QString, reported);
    const DeepFolder deep(depth);
    testsupport::writeBytes(QStringLiteral("job.ini"),
                            "[Printer]\r\nTempPrintDocument=" + sif.toUtf8() +
                                "\r\nTemplate Directory=" + templates.toUtf8() + "\r\n");
    // The job file is named as the working folder holds it, relative.
    ScriptedPrompter prompter;
    AppContext context;
    QVERIFY(!Startup::resolvePaths(context, QStringLiteral("job.ini"), QStringLiteral("/tmp"),
                                   prompter));
    QCOMPARE(prompter.messages(),
             QStringList{startupReport(52, QStringLiteral("Bad file name or number (") + reported +
                                               QLatin1Char(')'))});
    QVERIFY(QDir(QStringLiteral(".")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).isEmpty());
    for (const char *root : {"/tpl", "/PDF", "/HTML", "/RTF", "/tmp/T"})
        QVERIFY2(!QFileInfo::exists(QLatin1String(root)), root);
}

void StartupTest::templateDirectorySplit() {
    QTemporaryDir dir;
    const QString job = dir.filePath(QStringLiteral("job.ini"));
    const QString templates = dir.filePath(QStringLiteral("shared/Layouts"));
    QDir().mkpath(templates);
    testsupport::writeBytes(job, "[Printer]\r\nTempPrintDocument=a.sif\r\nTemplate Directory="
                                 "shared\\Layouts\r\n");
    ScriptedPrompter prompter;
    AppContext context;
    QVERIFY(Startup::resolvePaths(context, job, dir.path(), prompter));
    QCOMPARE(context.paths.templateRoot, dir.filePath(QStringLiteral("shared")));
    QCOMPARE(context.paths.templateFolder, templates);
    QCOMPARE(context.paths.pdfFolder, templates + QStringLiteral("/PDF"));
    // The three export folders are made; the job file is left alone.
    QVERIFY(QDir(templates + QStringLiteral("/PDF")).exists());
    QVERIFY(QDir(templates + QStringLiteral("/HTML")).exists());
    QVERIFY(QDir(templates + QStringLiteral("/RTF")).exists());
    QVERIFY(!testsupport::readBytes(job).contains("Layouts\r\nTemplate"));
}

void StartupTest::runMode_data() {
    QTest::addColumn<QString>("mode");
    QTest::addColumn<int>("action");
    QTest::newRow("1") << "1" << int(Startup::RunModeAction::ShowMainWindow);
    QTest::newRow("3") << "3" << int(Startup::RunModeAction::ShowMainWindow);
    QTest::newRow("2") << "2" << int(Startup::RunModeAction::PrintUnattended);
    QTest::newRow("blank then 1") << " 1" << int(Startup::RunModeAction::End);
    QTest::newRow("empty") << "" << int(Startup::RunModeAction::End);
    QTest::newRow("4") << "4" << int(Startup::RunModeAction::End);
}

void StartupTest::runMode() {
    QFETCH(QString, mode);
    QFETCH(int, action);
    QCOMPARE(int(Startup::actionForRunMode(mode)), action);
}

void StartupTest::orderFileVersion_data() {
    QTest::addColumn<QByteArray>("cif");
    QTest::addColumn<bool>("present");
    QTest::addColumn<bool>("version4");
    QTest::newRow("none") << QByteArray() << false << false;
    QTest::newRow("first line") << QByteArray("[CIF V4]\r\nCO=1\r\n") << true << true;
    QTest::newRow("blanks around") << QByteArray("  [CIF V4]  \r\n") << true << true;
    QTest::newRow("later line") << QByteArray("CO=1\r\n[CIF V4]\r\n") << true << true;
    QTest::newRow("lower case") << QByteArray("[cif v4]\r\n") << true << false;
    QTest::newRow("old format") << QByteArray("CO=1\r\nDE=100\r\n") << true << false;
}

void StartupTest::orderFileVersion() {
    QFETCH(QByteArray, cif);
    QFETCH(bool, present);
    QFETCH(bool, version4);
    QTemporaryDir dir;
    const QString job = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(job,
                            "[Printer]\r\nTempPrintDocument=a.sif\r\nActiveDocument=Doc.sp4\r\n"
                            "Template Directory=T\r\n");
    if (present)
        testsupport::writeBytes(dir.filePath(QStringLiteral("Doc.cif")), cif);
    ScriptedPrompter prompter;
    AppContext context;
    QVERIFY(Startup::resolvePaths(context, job, dir.path(), prompter));
    Startup::readOrderFile(context, prompter);
    QCOMPARE(context.cifPresent, present);
    QCOMPARE(context.cifVersion4, version4);
}

TAVREL_TEST(StartupTest)
#include "StartupTest.moc"
