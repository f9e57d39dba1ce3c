#pragma once

#include "base/RuntimeError.h"

#include <QLockFile>
#include <QString>

#include <memory>
#include <optional>

namespace tavrel {

class Prompter;

// Holds the lock that marks the running instance for as long as the object lives. A lock left
// by a crashed instance is taken over.
class SingleInstance {
public:
    // lockPath empty: "tavrel.lock" in the user's runtime folder.
    explicit SingleInstance(const QString &lockPath = {});

    // This process holds the lock.
    bool isFirst() const { return !m_anotherInstance && !m_failure; }
    // Another running instance holds the lock: the one case in which start-up ends silently.
    bool anotherInstanceRuns() const { return m_anotherInstance; }
    // Why the lock could not be made when no other instance holds it (a full or read-only
    // runtime folder, a folder in the lock's place); start-up reports it and goes on.
    const std::optional<RuntimeError> &failure() const { return m_failure; }

    static QString defaultLockPath();

private:
    std::unique_ptr<QLockFile> m_lock;
    bool m_anotherInstance = false;
    std::optional<RuntimeError> m_failure;
};

// Start-up's single-instance test: false when another instance runs, and the program ends
// without a word. Any other failure to take the lock is reported, and start-up goes on.
bool passesSingleInstanceTest(const SingleInstance &instance, Prompter &prompter);

} // namespace tavrel
