// A plain main for the fuzz targets: runs one file through a target once, in a build without
// sanitizers or coverage, so that the time a large input takes is the program's own.

#include <QFile>

#include <sys/resource.h>

#include <cstdint>
#include <cstdio>
#include <ctime>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

int main(int argc, char **argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s INPUT\n", argv[0]);
        return 2;
    }
    QFile file(QString::fromLocal8Bit(argv[1]));
    if (!file.open(QIODevice::ReadOnly))
        return 2;
    const QByteArray bytes = file.readAll();
    // Processor time of this process: the reader's own cost, whatever else the machine runs.
    const auto cpuSeconds = [] {
        timespec now{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
        return double(now.tv_sec) + double(now.tv_nsec) / 1e9;
    };
    const double start = cpuSeconds();
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                           std::size_t(bytes.size()));
    const double elapsed = cpuSeconds() - start;
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    // Seconds for the reader, then the peak resident memory of the process in MB.
    std::printf("%.3f %.0f\n", elapsed, double(usage.ru_maxrss) / 1024.0);
    return 0;
}
