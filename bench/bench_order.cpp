// Order file reading at 10 MB: comment lines ("TN=") that are all distinct, which the reader must
// each look for in the comments gathered before them, and the same line repeated for
// comparison. Each case runs in a child process of its own so that its peak memory is its own.
// Prints processor time and peak resident memory; never fails on them.

#include "Measure.h"

#include "base/TextFile.h"
#include "base/Windows1252.h"
#include "spec/OrderData.h"
#include "spec/OrderFileReader.h"

#include <QByteArray>
#include <QRandomGenerator>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <functional>

using namespace tavrel;

namespace {

constexpr qsizetype fileSize = 10 * 1024 * 1024;

QByteArray commentFile(const std::function<QByteArray(int)> &comment) {
    QByteArray bytes;
    bytes.reserve(fileSize + 256);
    for (int line = 0; bytes.size() < fileSize; ++line)
        bytes += "TN=" + comment(line) + "\r\n";
    bytes.truncate(fileSize);
    return bytes;
}

QByteArray randomText(QRandomGenerator &random, const QByteArray &alphabet) {
    QByteArray text(random.bounded(5, 81), Qt::Uninitialized);
    for (char &c : text)
        c = alphabet[random.bounded(int(alphabet.size()))];
    return text;
}

void measure(const char *name, const QByteArray &bytes) {
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        const qint64 start = bench::cpuNanoseconds();
        const QStringList lines = TextFile::splitLines(fromWindows1252(bytes));
        OrderData order;
        readOrderHeaderLines(lines, order);
        const double seconds = double(bench::cpuNanoseconds() - start) / 1e9;
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        std::printf("%-44s %6.2f s  peak %4.0f MB  comments %5.1f MB\n", name, seconds,
                    double(usage.ru_maxrss) / 1024.0,
                    double(order.header.comments.size()) / (1024.0 * 1024.0));
        std::fflush(stdout);
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
}

} // namespace

int main() {
    QRandomGenerator random(7);
    QByteArray letters = "abcdefghijklmnopqrstuvwxyz ";
    QByteArray anyByte;
    for (int c = 0x20; c < 0x100; ++c)
        anyByte += char(c);
    std::printf("order file of 10 MB, read from memory (processor time)\n");
    measure("one comment repeated",
            commentFile([](int) { return QByteArray("Deliver to the loading dock after 3 pm"); }));
    measure("distinct comments (numbered)", commentFile([](int line) {
                return "Comment " + QByteArray::number(line) + " about the delivery of chairs";
            }));
    measure("distinct comments (random letters)",
            commentFile([&](int) { return randomText(random, letters); }));
    measure("distinct comments (random Windows-1252)",
            commentFile([&](int) { return randomText(random, anyByte); }));
    return 0;
}
