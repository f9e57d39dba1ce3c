#pragma once

#include <atomic>

namespace tavrel {

// A stop request that one thread raises and another reads between pages: the window thread
// cancels, the layout or export thread checks. Raising it is final for the job it belongs to.
class CancelToken {
public:
    void cancel() { m_cancelled.store(true, std::memory_order_relaxed); }
    bool isCancelled() const { return m_cancelled.load(std::memory_order_relaxed); }

private:
    std::atomic<bool> m_cancelled{false};
};

} // namespace tavrel
