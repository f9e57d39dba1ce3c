#include "shell/JobPaths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tavrel {
namespace PathRules {

namespace {

// "C:..." and paths rooted at "\" or "/" (UNC paths among them) are taken as they stand.
bool isAbsoluteForm(const QString &path) {
    const bool windowsAbsolute = path.size() >= 2 && path[1] == QLatin1Char(':');
    const bool uncOrRooted =
        path.startsWith(QLatin1Char('\\')) || path.startsWith(QLatin1Char('/'));
    return windowsAbsolute || uncOrRooted;
}

} // namespace

qsizetype lastSeparator(const QString &path) {
    return std::max(path.lastIndexOf(QLatin1Char('\\')), path.lastIndexOf(QLatin1Char('/')));
}

QString lastComponent(const QString &path) {
    return path.mid(lastSeparator(path) + 1);
}

QString beforeLastComponent(const QString &path) {
    const qsizetype at = lastSeparator(path);
    return at < 0 ? QString() : path.left(at);
}

QString jobFolder(const QString &jobFile) {
    if (jobFile.isEmpty())
        return {};
    const QString folder = QFileInfo(jobFile).absolutePath();
    return QDir::isAbsolutePath(folder) ? folder : QString();
}

bool isUsable(const QString &path) {
    // Linux refuses paths of PATH_MAX (4096) bytes or more, terminating zero included.
    constexpr qsizetype MaxPathBytes = 4095;
    return isAbsoluteForm(path) && QFile::encodeName(path).size() <= MaxPathBytes;
}

QString resolveAgainst(const QString &jobFile, const QString &path) {
    if (path.isEmpty() || isAbsoluteForm(path))
        return path;
    QString relative = path;
    relative.replace(QLatin1Char('\\'), QLatin1Char('/'));
    const QString base = jobFolder(jobFile);
    if (base.isEmpty())
        return {};
    return QDir::cleanPath(QDir(base).filePath(relative));
}

QString join(const QString &folder, const QString &name) {
    return folder + QDir::separator() + name;
}

} // namespace PathRules
} // namespace tavrel
