#include "common/TestSupport.h"

#include "base/IniFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace testsupport {

QString dataPath(const QString &relative) {
    return QDir(QStringLiteral(TAVREL_TEST_DATA)).filePath(relative);
}

QString sourcePath(const QString &relative) {
    return QDir(QStringLiteral(TAVREL_SOURCE_DIR)).filePath(relative);
}

QString realWorldSifFolder() {
    const QString folder = QDir(QStringLiteral(TAVREL_SOURCE_DIR))
                               .absoluteFilePath(QStringLiteral("../shared/realworld/sif"));
    return QFileInfo(folder).isDir() ? QDir::cleanPath(folder) : QString();
}

QString copyDemoJob(const QString &folder) {
    const QDir demo(sourcePath(QStringLiteral("examples/demo")));
    for (const QString &name : demo.entryList(QDir::Files)) {
        if (!QFile::copy(demo.filePath(name), QDir(folder).filePath(name)))
            return {};
    }
    const QString job = QDir(folder).filePath(QStringLiteral("job.ini"));
    QFile::setPermissions(job, QFile::ReadOwner | QFile::WriteOwner);
    const QString templates = sourcePath(QStringLiteral("resources/Print Templates"));
    tavrel::IniFile::write(
        job, QStringLiteral("Printer"),
        {{QStringLiteral("Template Directory"), templates},
         {QStringLiteral("Cover Template"), templates + QStringLiteral("/Classic.cov")},
         {QStringLiteral("Body Template"), templates + QStringLiteral("/Classic Customer.cst")},
         {QStringLiteral("Summary Template"),
          templates + QStringLiteral("/Classic Customer.sum")}});
    return job;
}

QByteArray readBytes(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

void writeBytes(const QString &path, const QByteArray &bytes) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(bytes);
}

QString compareWithGolden(const QByteArray &actual, const QString &relative) {
    const QString expectedPath = dataPath(relative);
    if (qEnvironmentVariableIntValue("TAVREL_UPDATE_GOLDEN") == 1) {
        writeBytes(expectedPath, actual);
        return {};
    }
    if (!QFile::exists(expectedPath))
        return QStringLiteral("expected file missing: %1").arg(expectedPath);
    const QByteArray expected = readBytes(expectedPath);
    if (expected == actual)
        return {};
    const QString actualPath = QDir::current().filePath(QStringLiteral("actual/") + relative);
    writeBytes(actualPath, actual);
    qsizetype at = 0;
    while (at < expected.size() && at < actual.size() && expected[at] == actual[at])
        ++at;
    return QStringLiteral("%1 differs from %2 at byte %3 (expected %4 bytes, got %5)")
        .arg(actualPath, expectedPath)
        .arg(at)
        .arg(expected.size())
        .arg(actual.size());
}

} // namespace testsupport
