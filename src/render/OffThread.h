#pragma once

#include <functional>

namespace tavrel {

// Runs work on a thread of its own while the calling thread's event loop goes on (windows
// paint, a Cancel button answers), and returns when work has ended; an exception work throws
// is thrown again here. tick runs on the calling thread every intervalMs meanwhile (progress
// shown from values the work publishes, e.g. in atomics). The caller keeps whatever work uses
// unchanged until it returns.
void runOffThread(const std::function<void()> &work, const std::function<void()> &tick = {},
                  int intervalMs = 100);

} // namespace tavrel
