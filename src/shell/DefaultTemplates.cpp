#include "shell/DefaultTemplates.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace tavrel {
namespace DefaultTemplates {

namespace {

const QString &folderName() {
    static const QString name = QStringLiteral("Print Templates");
    return name;
}

// Makes folder and copies every file of `from` into it. Each copy goes through a temporary file
// and a rename (QFile::copy), so a failed seed never leaves a half-written template; a file that
// cannot be copied is left out and the folder stays usable.
void seed(const QString &folder, const QString &from) {
    if (!QDir().mkpath(folder) || from.isEmpty())
        return;
    const QDir source(from);
    const QFileInfoList files = source.entryInfoList(QDir::Files, QDir::Name);
    for (const QFileInfo &file : files) {
        const QString target = QDir(folder).filePath(file.fileName());
        if (QFile::copy(file.filePath(), target))
            QFile(target).setPermissions(QFile(target).permissions() | QFile::WriteOwner);
    }
}

} // namespace

QString installedTemplates(const QString &executableFolder) {
    const QString beside =
        QDir::cleanPath(executableFolder + QStringLiteral("/../share/tavrel/") + folderName());
    if (QFileInfo(beside).isDir())
        return beside;
    return QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                                  QStringLiteral("tavrel/") + folderName(),
                                  QStandardPaths::LocateDirectory);
}

QString templateRoot(const QString &executableFolder, const QString &dataHome) {
    if (QFileInfo(QDir(executableFolder).filePath(folderName())).isDir())
        return executableFolder;
    QString home = dataHome;
    if (home.isEmpty())
        home = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (home.isEmpty())
        return executableFolder;
    const QString root = QDir::cleanPath(home + QStringLiteral("/tavrel"));
    const QString folder = root + QLatin1Char('/') + folderName();
    // Only a folder that does not exist yet is seeded: templates the user has since deleted or
    // changed stay as the user left them.
    if (!QFileInfo::exists(folder))
        seed(folder, installedTemplates(executableFolder));
    return root;
}

} // namespace DefaultTemplates
} // namespace tavrel
