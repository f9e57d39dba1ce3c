#pragma once

#include <csignal>

#include <sys/resource.h>

namespace testsupport {

// While it lives, no file of this process may grow past bytes: a write beyond fails (EFBIG) as
// on a full disk, for root as well, without taking the machine's disk. SIGXFSZ is ignored
// meanwhile, so the write returns its error instead of ending the process.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &m_saved);
        m_previousHandler = std::signal(SIGXFSZ, SIG_IGN);
        rlimit limited = m_saved;
        limited.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_saved);
        std::signal(SIGXFSZ, m_previousHandler);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    rlimit m_saved{};
    void (*m_previousHandler)(int) = nullptr;
};

} // namespace testsupport
