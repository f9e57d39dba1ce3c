#include "shell/platform/SingleInstance.h"

#include "base/ErrorReport.h"
#include "shell/Startup.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace tavrel {

SingleInstance::SingleInstance(const QString &lockPath)
    : m_lock(std::make_unique<QLockFile>(lockPath.isEmpty() ? defaultLockPath() : lockPath)) {
    if (m_lock->tryLock(0))
        return;
    const QString path = m_lock->fileName();
    const QFileInfo info(path);
    // QLockFile says "held" for anything in the lock's place that it cannot take over. Only a
    // lock file (a live instance's, or one being written by an instance starting right now)
    // is another instance; a folder or any other failure is not.
    if (m_lock->error() == QLockFile::LockFailedError && info.isFile() && !info.isSymLink()) {
        m_anotherInstance = true;
        return;
    }
    const int number = m_lock->error() == QLockFile::PermissionError
                           ? ErrorNumber::PermissionDenied
                           : ErrorNumber::PathFileAccessError;
    m_failure = RuntimeError(
        number, QStringLiteral("%1 (%2)").arg(RuntimeError::standardDescription(number), path));
}

bool passesSingleInstanceTest(const SingleInstance &instance, Prompter &prompter) {
    if (instance.anotherInstanceRuns())
        return false;
    // Without the lock the job still runs: a job left unprinted loses the user's work, a
    // second window at worst shows it twice.
    if (instance.failure())
        reportError(prompter, Startup::procedureName(), *instance.failure());
    return true;
}

QString SingleInstance::defaultLockPath() {
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty())
        folder = QDir::tempPath();
    return QDir(folder).filePath(QStringLiteral("tavrel.lock"));
}

} // namespace tavrel
