#include "shell/DefaultTemplates.h"
#include "base/ScriptedPrompter.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"
#include "shell/Startup.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrel;

// The default template folder: beside the executable in a development build, the user's data
// folder (made and seeded with the installed Classic templates) for an installed program.
class DefaultTemplatesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void templateRoot_data();
    void templateRoot();
    void writtenBackToTheJob();

private:
    QTemporaryDir m_systemData;
};

namespace {

const QStringList classic = {QStringLiteral("Classic Customer.cst"),
                             QStringLiteral("Classic Customer.sum"), QStringLiteral("Classic.cov")};

// <prefix>/bin as an installed executable's folder, with <prefix>/share/tavrel/Print Templates
// holding copies of the Classic templates when withInstalled.
QString makeInstalledPrefix(const QString &prefix, bool withInstalled) {
    QDir().mkpath(prefix + QStringLiteral("/bin"));
    if (withInstalled) {
        const QString shared = prefix + QStringLiteral("/share/tavrel/Print Templates");
        QDir().mkpath(shared);
        for (const QString &name : classic)
            QFile::copy(
                testsupport::sourcePath(QStringLiteral("resources/Print Templates/") + name),
                shared + QLatin1Char('/') + name);
    }
    return prefix + QStringLiteral("/bin");
}

QStringList filesIn(const QString &folder) {
    return QDir(folder).entryList(QDir::Files, QDir::Name);
}

} // namespace

void DefaultTemplatesTest::initTestCase() {
    // Installed templates are looked up in $XDG_DATA_DIRS too; keep the machine's own out.
    qputenv("XDG_DATA_DIRS", m_systemData.path().toLocal8Bit());
}

void DefaultTemplatesTest::templateRoot_data() {
    QTest::addColumn<bool>("besideExecutable"); // bin/Print Templates exists
    QTest::addColumn<bool>("installed");        // share/tavrel/Print Templates exists
    QTest::addColumn<bool>("userFolderExists"); // the user's folder exists, with a changed file
    QTest::addColumn<bool>("expectUserFolder");
    QTest::addColumn<QStringList>("expectedFiles"); // in the user's folder afterwards
    QTest::newRow("development build") << true << true << false << false << QStringList();
    QTest::newRow("installed, first run") << false << true << false << true << classic;
    QTest::newRow("installed, user folder kept as it is")
        << false << true << true << true << QStringList{QStringLiteral("Classic.cov")};
    QTest::newRow("no installed templates") << false << false << false << true << QStringList();
}

void DefaultTemplatesTest::templateRoot() {
    QFETCH(bool, besideExecutable);
    QFETCH(bool, installed);
    QFETCH(bool, userFolderExists);
    QFETCH(bool, expectUserFolder);
    QFETCH(QStringList, expectedFiles);

    QTemporaryDir dir;
    const QString bin = makeInstalledPrefix(dir.filePath(QStringLiteral("usr")), installed);
    if (besideExecutable)
        QDir().mkpath(bin + QStringLiteral("/Print Templates"));
    const QString dataHome = dir.filePath(QStringLiteral("data"));
    const QString userFolder = dataHome + QStringLiteral("/tavrel/Print Templates");
    if (userFolderExists) {
        QDir().mkpath(userFolder);
        testsupport::writeBytes(userFolder + QStringLiteral("/Classic.cov"), "changed by the user");
    }

    const QString root = DefaultTemplates::templateRoot(bin, dataHome);

    QCOMPARE(root, expectUserFolder ? dataHome + QStringLiteral("/tavrel") : bin);
    QCOMPARE(QFileInfo::exists(userFolder), expectUserFolder);
    if (!expectUserFolder)
        return;
    QCOMPARE(filesIn(userFolder), expectedFiles);
    if (userFolderExists) {
        QCOMPARE(testsupport::readBytes(userFolder + QStringLiteral("/Classic.cov")),
                 QByteArray("changed by the user"));
        return;
    }
    for (const QString &name : expectedFiles) {
        QCOMPARE(testsupport::readBytes(userFolder + QLatin1Char('/') + name),
                 testsupport::readBytes(
                     testsupport::sourcePath(QStringLiteral("resources/Print Templates/") + name)));
        QVERIFY(QFileInfo(userFolder + QLatin1Char('/') + name).isWritable());
    }
}

void DefaultTemplatesTest::writtenBackToTheJob() {
    // An installed program on a job with an empty "Template Directory": the user's folder is
    // written back, and its PDF, HTML and RTF folders are made.
    QTemporaryDir dir;
    const QString bin = makeInstalledPrefix(dir.filePath(QStringLiteral("usr")), true);
    const QString dataHome = dir.filePath(QStringLiteral("data"));
    const QString job = dir.filePath(QStringLiteral("job.ini"));
    testsupport::writeBytes(job, "[Printer]\r\nTempPrintDocument=a.sif\r\nTemplate Directory=\r\n");
    ScriptedPrompter prompter;
    AppContext context;
    QVERIFY(Startup::resolvePaths(context, job, DefaultTemplates::templateRoot(bin, dataHome),
                                  prompter));
    const QString folder = dataHome + QStringLiteral("/tavrel/Print Templates");
    QCOMPARE(testsupport::readBytes(job),
             QByteArray("[Printer]\r\nTempPrintDocument=a.sif\r\nTemplate Directory=") +
                 folder.toLocal8Bit() + "\r\n");
    QCOMPARE(context.paths.templateFolder, folder);
    for (const char *sub : {"PDF", "HTML", "RTF"})
        QVERIFY2(QFileInfo(folder + QLatin1Char('/') + QLatin1String(sub)).isDir(), sub);
    QCOMPARE(filesIn(folder), classic);
}

TAVREL_TEST(DefaultTemplatesTest)
#include "DefaultTemplatesTest.moc"
