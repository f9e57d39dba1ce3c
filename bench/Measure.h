#pragma once

// What the benchmarks measure besides wall time.

#include <QtGlobal>

#include <malloc.h>
#include <time.h>

#include <cstddef>

namespace bench {

// Processor time of this process, in nanoseconds: on a virtual machine the wall time also holds
// the host's work of handing fresh memory to the guest, which is not the reader's.
inline qint64 cpuNanoseconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return qint64(now.tv_sec) * 1000000000 + now.tv_nsec;
}

// Bytes the heap holds now.
inline std::size_t heapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

} // namespace bench
