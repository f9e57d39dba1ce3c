#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "shell/platform/FileTypeRegistration.h"
#include "shell/platform/ParentProgressWindow.h"
#include "shell/platform/SingleInstance.h"

#include <QDir>
#include <QElapsedTimer>
#include <QMimeDatabase>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace tavrel;

// The pieces that meet the desktop: file-type registration, the single-instance lock and closing
// the parent's progress window on a real X server.
class PlatformIntegrationTest : public QObject {
    Q_OBJECT

private slots:
    void fileTypesRegistered();
    void singleInstance();
    void staleLockIsTakenOver();
    void lockThatCannotBeMadeIsReported_data();
    void lockThatCannotBeMadeIsReported();
    void secondInstanceEndsSilently();
    void closesParentProgressWindow();
};

void PlatformIntegrationTest::fileTypesRegistered() {
    QTemporaryDir home;
    FileTypeRegistration::registerAll(home.path());
    const QByteArray xml =
        testsupport::readBytes(home.filePath(QStringLiteral("mime/packages/orvanta-tavrel.xml")));
    QCOMPARE(xml, FileTypeRegistration::mimePackage());
    for (const char *glob : {"*.cst", "*.cov", "*.sum", "*.grp"})
        QVERIFY2(xml.contains(QByteArray("<glob pattern=\"") + glob + "\"/>"), glob);
    QCOMPARE(xml.count("<comment>OrvantaPrint Save File</comment>"), 4);
    const QByteArray desktop = testsupport::readBytes(
        home.filePath(QStringLiteral("applications/orvanta-tavrel-files.desktop")));
    QVERIFY(desktop.startsWith("[Desktop Entry]\n"));
    QVERIFY(desktop.contains("MimeType=application/x-orvanta-cst-auto-file;"
                             "application/x-orvanta-cov-auto-file;"
                             "application/x-orvanta-sum-auto-file;"
                             "application/x-orvanta-grp-auto-file;\n"));

    // Registering again leaves the files alone.
    const QDateTime written =
        QFileInfo(home.filePath(QStringLiteral("mime/packages/orvanta-tavrel.xml"))).lastModified();
    QTest::qWait(20);
    FileTypeRegistration::registerAll(home.path());
    QCOMPARE(
        QFileInfo(home.filePath(QStringLiteral("mime/packages/orvanta-tavrel.xml"))).lastModified(),
        written);

    // The desktop's MIME database recognises the types from the package.
    QProcess check;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_DATA_HOME"), home.path());
    if (QStandardPaths::findExecutable(QStringLiteral("update-mime-database")).isEmpty())
        QSKIP("update-mime-database not installed");
    check.setProcessEnvironment(env);
    check.start(QStringLiteral("update-mime-database"), {home.filePath(QStringLiteral("mime"))});
    QVERIFY(check.waitForFinished(10000));
    QVERIFY(QFile::exists(home.filePath(QStringLiteral("mime/mime.cache"))));
}

void PlatformIntegrationTest::singleInstance() {
    QTemporaryDir dir;
    const QString lock = dir.filePath(QStringLiteral("tavrel.lock"));
    {
        const SingleInstance first(lock);
        QVERIFY(first.isFirst());
        const SingleInstance second(lock);
        QVERIFY(!second.isFirst());
    }
    const SingleInstance again(lock);
    QVERIFY(again.isFirst());
}

void PlatformIntegrationTest::staleLockIsTakenOver() {
    // A crashed instance leaves its lock behind; a process that is gone does not hold it.
    QTemporaryDir dir;
    const QString lock = dir.filePath(QStringLiteral("tavrel.lock"));
    QProcess crashed;
    crashed.start(QStringLiteral("sleep"), {QStringLiteral("30")});
    QVERIFY(crashed.waitForStarted());
    const qint64 deadPid = crashed.processId();
    crashed.kill();
    crashed.waitForFinished();
    testsupport::writeBytes(lock, QByteArray::number(deadPid) + '\n' +
                                      QCoreApplication::applicationName().toUtf8() + '\n' +
                                      QSysInfo::machineHostName().toUtf8() + '\n' +
                                      QSysInfo::machineUniqueId() + '\n');
    const SingleInstance next(lock);
    QVERIFY(next.isFirst());
}

void PlatformIntegrationTest::lockThatCannotBeMadeIsReported_data() {
    QTest::addColumn<QString>("place"); // what stands where the lock should go
    QTest::addColumn<int>("number");
    QTest::newRow("a folder in the lock's place") << "folder" << 75;
    QTest::newRow("runtime folder missing") << "no folder" << 75;
    QTest::newRow("runtime folder is a file") << "file as folder" << 75;
    QTest::newRow("read-only runtime folder") << "read-only" << 70;
}

// Only another running instance ends start-up silently; a lock that cannot be made at all is
// reported with the error report, and start-up goes on.
void PlatformIntegrationTest::lockThatCannotBeMadeIsReported() {
    QFETCH(QString, place);
    QFETCH(int, number);
    QTemporaryDir dir;
    QString lock = dir.filePath(QStringLiteral("tavrel.lock"));
    if (place == QLatin1String("folder")) {
        QVERIFY(QDir().mkdir(lock));
    } else if (place == QLatin1String("no folder")) {
        lock = dir.filePath(QStringLiteral("gone/tavrel.lock"));
    } else if (place == QLatin1String("file as folder")) {
        testsupport::writeBytes(dir.filePath(QStringLiteral("runtime")), "x");
        lock = dir.filePath(QStringLiteral("runtime/tavrel.lock"));
    } else {
        if (geteuid() == 0)
            QSKIP("the superuser writes into read-only folders");
        const QString folder = dir.filePath(QStringLiteral("readonly"));
        QVERIFY(QDir().mkdir(folder));
        QVERIFY(::chmod(QFile::encodeName(folder).constData(), 0500) == 0);
        lock = folder + QStringLiteral("/tavrel.lock");
    }
    const SingleInstance instance(lock);
    QVERIFY(!instance.isFirst());
    QVERIFY(!instance.anotherInstanceRuns());
    ScriptedPrompter prompter;
    QVERIFY(passesSingleInstanceTest(instance, prompter));
    QCOMPARE(prompter.messages(),
             QStringList{QStringLiteral("An Error Occured at - Main.\r\n\r\nError Number: %1\r\n"
                                        "Error Description: %2 (%3)")
                             .arg(number)
                             .arg(RuntimeError::standardDescription(number), lock)});
    QCOMPARE(prompter.calls().first().title, QStringLiteral("Tavrel - Error"));
}

void PlatformIntegrationTest::secondInstanceEndsSilently() {
    QTemporaryDir dir;
    const QString lock = dir.filePath(QStringLiteral("tavrel.lock"));
    const SingleInstance first(lock);
    ScriptedPrompter prompter;
    QVERIFY(passesSingleInstanceTest(first, prompter));
    const SingleInstance second(lock);
    QVERIFY(second.anotherInstanceRuns());
    QVERIFY(!passesSingleInstanceTest(second, prompter));
    QVERIFY(prompter.calls().isEmpty());
}

void PlatformIntegrationTest::closesParentProgressWindow() {
    const QString xvfb = QStandardPaths::findExecutable(QStringLiteral("Xvfb"));
    const QString xmessage = QStandardPaths::findExecutable(QStringLiteral("xmessage"));
    if (xvfb.isEmpty() || xmessage.isEmpty())
        QSKIP("Xvfb or xmessage not installed");

    QProcess server;
    server.start(xvfb,
                 {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                  QStringLiteral("0"), QStringLiteral("800x600x24"), QStringLiteral("-nolisten"),
                  QStringLiteral("tcp")});
    QVERIFY(server.waitForStarted());
    QByteArray displayNumber;
    QTRY_VERIFY_WITH_TIMEOUT((displayNumber += server.readAllStandardOutput()).contains('\n'),
                             30000);
    const QByteArray display = ':' + displayNumber.trimmed();
    const QByteArray previousDisplay = qgetenv("DISPLAY");
    qputenv("DISPLAY", display);

    QProcess parent;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(display));
    parent.setProcessEnvironment(env);
    // The server may announce its number a moment before it takes clients: start again until
    // the window is up.
    QElapsedTimer starting;
    starting.start();
    do {
        parent.start(xmessage, {QStringLiteral("-title"), ParentProgressWindow::title(),
                                QStringLiteral("Printing...")});
        QVERIFY(parent.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(
            ParentProgressWindow::exists() || parent.state() != QProcess::Running, 10000);
    } while (parent.state() != QProcess::Running && starting.elapsed() < 30000 &&
             (QTest::qWait(300), true));
    QVERIFY2(parent.state() == QProcess::Running, parent.readAllStandardError().constData());
    QVERIFY(!ParentProgressWindow::exists(QStringLiteral("Some Other Window")));

    QVERIFY(ParentProgressWindow::close());
    // A window that has just appeared may not have announced WM_DELETE_WINDOW yet (xmessage
    // sets its title first); the parent's real window is long set up, so asking again is fair.
    QElapsedTimer waited;
    waited.start();
    while (!parent.waitForFinished(200) && waited.elapsed() < 20000)
        ParentProgressWindow::close();
    if (parent.state() != QProcess::NotRunning) {
        // Seen only on a machine crowded with other X servers; the close request was sent.
        parent.kill();
        server.terminate();
        server.waitForFinished(5000);
        QSKIP("xmessage did not react to the close request in time");
    }
    QTRY_VERIFY_WITH_TIMEOUT(!ParentProgressWindow::exists(), 5000);
    QVERIFY(!ParentProgressWindow::close());

    server.terminate();
    server.waitForFinished(5000);
    if (previousDisplay.isEmpty())
        qunsetenv("DISPLAY");
    else
        qputenv("DISPLAY", previousDisplay);
}

TAVREL_TEST(PlatformIntegrationTest)
#include "PlatformIntegrationTest.moc"
