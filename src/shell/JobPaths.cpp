#include "shell/JobPaths.h"

#include <QDir>
#include <QFileInfo>

namespace tavrel {
namespace PathRules {

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

QString resolveAgainst(const QString &jobFile, const QString &path) {
    if (path.isEmpty())
        return path;
    const bool windowsAbsolute = path.size() >= 2 && path[1] == QLatin1Char(':');
    const bool uncOrRooted =
        path.startsWith(QLatin1Char('\\')) || path.startsWith(QLatin1Char('/'));
    if (windowsAbsolute || uncOrRooted)
        return path;
    QString relative = path;
    relative.replace(QLatin1Char('\\'), QLatin1Char('/'));
    const QString base = QFileInfo(jobFile).absolutePath();
    return QDir::cleanPath(QDir(base).filePath(relative));
}

QString join(const QString &folder, const QString &name) {
    return folder + QDir::separator() + name;
}

} // namespace PathRules
} // namespace tavrel
