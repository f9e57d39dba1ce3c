#pragma once

#include <QLockFile>
#include <QString>

#include <memory>

namespace tavrel {

// Holds the lock that marks the running instance for as long as the object lives. A lock left
// by a crashed instance is taken over.
class SingleInstance {
public:
    // lockPath empty: "tavrel.lock" in the user's runtime folder.
    explicit SingleInstance(const QString &lockPath = {});

    bool isFirst() const { return m_first; }
    static QString defaultLockPath();

private:
    std::unique_ptr<QLockFile> m_lock;
    bool m_first = false;
};

} // namespace tavrel
