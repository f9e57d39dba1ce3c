// SIF reading speed and memory: generated SIF texts of 1,000, 10,000 and 100,000 items (the
// format of bench/gen_items.py: PN, PD, MC, QT, PL, SP and 0 to 4 ON/OD pairs, CR LF), read from
// memory and from a file. Prints figures; never fails on them.

#include "Measure.h"

#include "spec/SifReader.h"
#include "spec/SpecData.h"
#include "spec/Totals.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <limits>

using namespace tavrel;
using bench::cpuNanoseconds;
using bench::heapInUse;

namespace {

// A small deterministic generator, so every run reads the same text.
class Random {
public:
    explicit Random(std::uint64_t seed)
        : m_state(seed) {}
    std::uint32_t next() {
        m_state = m_state * 6364136223846793005ULL + 1442695040888963407ULL;
        return std::uint32_t(m_state >> 33);
    }
    int between(int low, int high) { return low + int(next() % std::uint32_t(high - low + 1)); }
    template <typename T, std::size_t N> const T &pick(const T (&list)[N]) {
        return list[next() % N];
    }

private:
    std::uint64_t m_state;
};

const char *const manufacturers[] = {"HMI", "STC", "KNL", "HAW", "ALL", "GUN", "TEK", "SIT"};
const char *const adjectives[] = {"Adjustable", "Mobile",    "Ergonomic", "Stackable",
                                  "Laminate",   "Veneer",    "Steel",     "Height-adjustable",
                                  "Lateral",    "Mesh-back", "Executive", "Task"};
const char *const nouns[] = {"worksurface", "desk",  "return", "credenza",      "pedestal",
                             "bookcase",    "table", "chair",  "storage tower", "panel"};
const char *const extras[] = {"2 box drawers", "grommets",        "levelers",  "casters",
                              "locking core",  "wire management", "36W x 24D", "72W x 36D",
                              "fixed arms",    "lumbar support"};
const char *const optionKinds[] = {"FIN", "FAB", "EDG", "BAS", "LCK", "PUL", "CAS", "ARM"};
const char *const optionValues[] = {"Finish: Black",
                                    "Fabric grade: Grade 3 Ocean",
                                    "Edge profile: Bullnose",
                                    "Base finish: Polished aluminum",
                                    "Lock option: Keyed alike",
                                    "Pull style: Bar pull"};
const int optionWeights[] = {35, 25, 20, 12, 8};

QByteArray generateSif(int items) {
    Random random(42);
    QByteArray text;
    text.reserve(qsizetype(items) * 200);
    const char alphabet[] = "ABCDEFGHJKLMNPRSTUVWXYZ0123456789";
    for (int i = 0; i < items; ++i) {
        const char *mc = random.pick(manufacturers);
        text += "PN=";
        text += QByteArray(mc, 2);
        for (int n = random.between(6, 14); n > 0; --n)
            text += alphabet[random.next() % (sizeof alphabet - 1)];
        text += "\r\nPD=";
        QByteArray description =
            QByteArray(random.pick(adjectives)) + ' ' + random.pick(nouns) + " with";
        const int target = random.between(30, 80);
        while (description.size() < target)
            description += QByteArray(" ") + random.pick(extras) + ',';
        description.chop(1);
        text += description;
        text += "\r\nMC=";
        text += mc;
        text += "\r\nQT=" + QByteArray::number(random.between(1, 40));
        const int list = random.between(2500, 450000);
        text += "\r\nPL=" + QByteArray::number(list / 100.0, 'f', 2);
        text += "\r\nSP=" + QByteArray::number(list * 0.55 / 100.0, 'f', 2) + "\r\n";
        int weight = random.between(1, 100);
        int options = 0;
        while (options < 4 && weight > optionWeights[options])
            weight -= optionWeights[options++];
        for (int o = 0; o < options; ++o) {
            text += QByteArray("ON=") + random.pick(optionKinds) + '-' +
                    QByteArray::number(random.between(1, 99)) +
                    "\r\nOD=" + random.pick(optionValues) + "\r\n";
        }
    }
    return text;
}

// The characters the records hold, in bytes (UTF-16).
std::size_t storedTextBytes(const SpecData &data) {
    std::size_t bytes = 0;
    for (int i = 1; i <= data.itemCount(); ++i) {
        for (auto field = int(ItemText::RecordNumber); field <= int(ItemText::OptionLaterLines);
             ++field)
            bytes += std::size_t(data.item(i).text(ItemText(field)).size()) * sizeof(QChar);
    }
    return bytes;
}

void run(int items, const QString &folder) {
    const QByteArray sif = generateSif(items);
    const double megabytes = double(sif.size()) / 1e6;
    const int repeats = std::max(3, 2000000 / std::max(1, int(sif.size() / 1000)) / 1000);

    // Reading from memory: the SIF reading rules, subtotals, extensions and totals.
    qint64 best = std::numeric_limits<qint64>::max();
    qint64 bestCpu = std::numeric_limits<qint64>::max();
    for (int r = 0; r < repeats; ++r) {
        SpecData data;
        QElapsedTimer timer;
        timer.start();
        const qint64 cpuStart = cpuNanoseconds();
        parseSifText(sif, QStringLiteral("bench.sp4"), data);
        Totals::computeAll(data);
        bestCpu = std::min(bestCpu, cpuNanoseconds() - cpuStart);
        best = std::min(best, timer.nsecsElapsed());
    }

    // Reading the file as start-up does.
    const QString path = folder + QStringLiteral("/items_%1.sif").arg(items);
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(sif) != sif.size())
            std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
    }
    qint64 bestFile = std::numeric_limits<qint64>::max();
    qint64 bestFileCpu = std::numeric_limits<qint64>::max();
    for (int r = 0; r < repeats; ++r) {
        SpecData data;
        QElapsedTimer timer;
        timer.start();
        const qint64 cpuStart = cpuNanoseconds();
        readSif(path, QStringLiteral("bench.sp4"), data);
        bestFileCpu = std::min(bestFileCpu, cpuNanoseconds() - cpuStart);
        bestFile = std::min(bestFile, timer.nsecsElapsed());
    }

    // Memory held by the records after reading.
    const std::size_t before = heapInUse();
    SpecData data;
    readSif(path, QStringLiteral("bench.sp4"), data);
    const std::size_t held = heapInUse() - before;
    const std::size_t text = storedTextBytes(data);

    const auto rate = [megabytes](qint64 nanoseconds) {
        return megabytes / (double(nanoseconds) / 1e9);
    };
    std::printf("%7d items %6.2f MB | memory: wall %6.1f MB/s, cpu %6.1f MB/s | file: wall %6.1f "
                "MB/s (%7.2f ms), cpu %6.1f MB/s | heap %5.0f B/item, text %4.0f B/item, beyond "
                "text %5.0f B/item\n",
                data.itemCount(), megabytes, rate(best), rate(bestCpu), rate(bestFile),
                double(bestFile) / 1e6, rate(bestFileCpu), double(held) / items,
                double(text) / items, (double(held) - double(text)) / items);
}

} // namespace

int main() {
    QTemporaryDir folder;
    if (!folder.isValid()) {
        std::fprintf(stderr, "no temporary folder\n");
        return 1;
    }
    std::printf("SIF reader (best of several runs; one core)\n");
    for (const int items : {1000, 10000, 100000})
        run(items, folder.path());
    return 0;
}
