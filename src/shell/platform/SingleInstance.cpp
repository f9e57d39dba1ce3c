#include "shell/platform/SingleInstance.h"

#include <QDir>
#include <QStandardPaths>

namespace tavrel {

SingleInstance::SingleInstance(const QString &lockPath)
    : m_lock(std::make_unique<QLockFile>(lockPath.isEmpty() ? defaultLockPath() : lockPath)) {
    m_first = m_lock->tryLock(0);
}

QString SingleInstance::defaultLockPath() {
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty())
        folder = QDir::tempPath();
    return QDir(folder).filePath(QStringLiteral("tavrel.lock"));
}

} // namespace tavrel
