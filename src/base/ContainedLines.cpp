#include "base/ContainedLines.h"

#include <divsufsort.h>

#include <QHashFunctions>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <new>

namespace tavrel {

namespace {

// Parts the lines in the byte text; no encoded character produces it.
constexpr std::uint8_t separator = 0xFF;

// A text read from a Windows-1252 file uses at most 256 characters, so each usually gets a byte
// of its own. Otherwise each UTF-16 unit takes one to three bytes after the manner of UTF-8: a
// lead byte never equals a continuation byte, so an encoded line matches at a byte position only
// where the line matches at a character. Either way the pieces looked for hold no separator, so
// a match never spans two lines.
class ByteCode {
public:
    explicit ByteCode(const QList<QStringView> &lines) {
        codes_.fill(-1);
        int count = 0;
        for (const QStringView line : lines) {
            for (const QChar character : line) {
                std::int16_t &code = codes_[character.unicode()];
                if (code < 0 && (code = std::int16_t(count++)) >= separator) {
                    compact_ = false;
                    return;
                }
            }
        }
    }

    void append(std::vector<std::uint8_t> &bytes, QStringView line) const {
        for (const QChar character : line) {
            const char16_t unit = character.unicode();
            if (compact_) {
                bytes.push_back(std::uint8_t(codes_[unit]));
            } else if (unit < 0x80) {
                bytes.push_back(std::uint8_t(unit));
            } else if (unit < 0x800) {
                bytes.push_back(std::uint8_t(0xC0 | (unit >> 6)));
                bytes.push_back(std::uint8_t(0x80 | (unit & 0x3F)));
            } else {
                bytes.push_back(std::uint8_t(0xE0 | (unit >> 12)));
                bytes.push_back(std::uint8_t(0x80 | ((unit >> 6) & 0x3F)));
                bytes.push_back(std::uint8_t(0x80 | (unit & 0x3F)));
            }
        }
    }

private:
    std::array<std::int16_t, 65536> codes_;
    bool compact_ = true;
};

struct Lines {
    std::vector<std::uint8_t> text;
    std::vector<std::int32_t> starts;
    std::vector<std::int32_t> lengths;
};

Lines encodedLines(const QList<QStringView> &lines) {
    const auto code = std::make_unique<ByteCode>(lines);
    Lines encoded;
    qsizetype size = 0;
    for (const QStringView line : lines)
        size += line.size() + 1;
    encoded.text.reserve(std::size_t(size));
    encoded.starts.reserve(std::size_t(lines.size()));
    encoded.lengths.reserve(std::size_t(lines.size()));
    for (const QStringView line : lines) {
        const std::size_t start = encoded.text.size();
        code->append(encoded.text, line);
        // The suffix sorter counts in 32 bits, and so do the marks below.
        if (encoded.text.size() >= std::size_t(std::numeric_limits<std::int32_t>::max()))
            throw std::bad_alloc();
        encoded.starts.push_back(std::int32_t(start));
        encoded.lengths.push_back(std::int32_t(encoded.text.size() - start));
        encoded.text.push_back(separator);
    }
    return encoded;
}

// The line starting at a position: a search among the few starts in the position's stretch of
// the text, found by table, since a search of all starts misses the cache at every step.
class LineFinder {
public:
    LineFinder(const Lines &lines, std::size_t textSize)
        : starts_(lines.starts) {
        // One more entry than there are stretches: the end of the last one.
        const std::size_t stretches = (textSize >> stretchBits) + 2;
        firstLineOfStretch_.reserve(stretches);
        std::size_t line = 0;
        for (std::size_t stretch = 0; stretch < stretches; ++stretch) {
            while (line < starts_.size() && std::size_t(starts_[line]) < (stretch << stretchBits))
                ++line;
            firstLineOfStretch_.push_back(std::int32_t(line));
        }
    }

    std::int32_t lineAt(std::int32_t start) const {
        const std::size_t stretch = std::size_t(start) >> stretchBits;
        const auto first = starts_.begin() + firstLineOfStretch_[stretch];
        const auto last = starts_.begin() + firstLineOfStretch_[stretch + 1];
        return std::int32_t(std::lower_bound(first, last, start) - starts_.begin());
    }

private:
    static constexpr int stretchBits = 8;

    const std::vector<std::int32_t> &starts_;
    std::vector<std::int32_t> firstLineOfStretch_;
};

// How far ahead the passes below ask for memory they will read out of order; the suffix order
// jumps across the whole text, and waiting for each read in turn would dominate their time.
constexpr std::size_t lookAhead = 16;

// Set on a common-prefix length whose suffix starts a line.
constexpr std::uint32_t lineStartMark = 0x80000000u;
constexpr std::uint32_t noSuffix = std::numeric_limits<std::uint32_t>::max();

// For each text position, the length of the common prefix of its suffix and the one sorted just
// before it (0 for the first), marked where the suffix starts a line. Linear: each position
// starts its comparison at most one byte short of where the one before it ended.
std::vector<std::uint32_t> commonPrefixes(const std::vector<std::uint8_t> &text,
                                          const std::vector<std::int32_t> &order) {
    const std::size_t size = text.size();
    // First the suffix sorted before each position's; each entry becomes its length in turn.
    std::vector<std::uint32_t> common(size);
    common[std::size_t(order[0])] = noSuffix;
    for (std::size_t rank = 1; rank < size; ++rank) {
        if (rank + lookAhead < size)
            __builtin_prefetch(&common[std::size_t(order[rank + lookAhead])], 1);
        common[std::size_t(order[rank])] = std::uint32_t(order[rank - 1]);
    }
    std::size_t length = 0;
    for (std::size_t position = 0; position < size; ++position) {
        if (position + lookAhead < size && common[position + lookAhead] != noSuffix)
            __builtin_prefetch(text.data() +
                               std::min(common[position + lookAhead] + length, size - 1));
        const std::uint32_t previous = common[position];
        if (previous == noSuffix) {
            length = 0;
        } else {
            while (position + length < size && previous + length < size &&
                   text[position + length] == text[previous + length])
                ++length;
        }
        const bool startsLine = position == 0 || text[position - 1] == separator;
        common[position] = std::uint32_t(length) | (startsLine ? lineStartMark : 0);
        length = length > 0 ? length - 1 : 0;
    }
    return common;
}

// A line occurs earlier when a suffix that starts before it shares its whole length. Among the
// sorted suffixes, the nearest such one on either side is the nearest with a smaller position.
// One pass in sorted order keeps a stack of suffixes whose smaller-positioned neighbour on the
// right is still to come, each with the least common prefix since it: a suffix meets its left
// neighbour when pushed and its right one when popped.
class EarlierOccurrences {
public:
    EarlierOccurrences(const Lines &lines, std::size_t textSize, std::vector<bool> &contained)
        : lines_(lines)
        , finder_(lines, textSize)
        , contained_(contained) {}

    void visit(std::int32_t position, std::uint32_t commonWithPrevious, bool startsLine) {
        if (!stack_.empty())
            stack_.back().common = std::min(stack_.back().common, commonWithPrevious);
        while (!stack_.empty() && stack_.back().position > position) {
            const Entry popped = stack_.back();
            stack_.pop_back();
            check(popped.line, popped.common);
            if (!stack_.empty())
                stack_.back().common = std::min(stack_.back().common, popped.common);
        }
        const std::int32_t line = startsLine ? finder_.lineAt(position) : -1;
        if (!stack_.empty())
            check(line, stack_.back().common);
        stack_.push_back({position, std::numeric_limits<std::uint32_t>::max(), line});
    }

private:
    struct Entry {
        std::int32_t position;
        std::uint32_t common;
        std::int32_t line;
    };

    void check(std::int32_t line, std::uint32_t common) {
        if (line >= 0 && common >= std::uint32_t(lines_.lengths[std::size_t(line)]))
            contained_[std::size_t(line)] = true;
    }

    const Lines &lines_;
    const LineFinder finder_;
    std::vector<bool> &contained_;
    std::vector<Entry> stack_;
};

// The suffixes that begin with a whole line sit together in sorted order, around the line's own,
// so walking out from it each way until a suffix no longer begins with the line meets an earlier
// one if there is any. That is a step or two for most lines and reads only a little of the text.
// But a line that occurs many times after itself and never before walks past every later copy,
// so all walks share a budget of bytes compared; past it they give up, and the caller falls back
// to the passes above, which cost the same whatever the text.
class NeighbourWalk {
public:
    NeighbourWalk(const Lines &lines, const std::vector<std::int32_t> &order)
        : lines_(lines)
        , order_(order)
        , budget_(4 * std::int64_t(order.size())) {}

    // Fills in `contained`, or returns false when the budget ran out first.
    bool run(std::vector<bool> &contained) {
        const LineFinder finder(lines_, order_.size());
        std::vector<std::uint64_t> startBits((order_.size() >> 6) + 1, 0);
        for (const std::int32_t start : lines_.starts)
            startBits[std::size_t(start) >> 6] |= std::uint64_t(1) << (start & 63);
        const std::size_t size = order_.size();
        for (std::size_t rank = 0; rank < size; ++rank) {
            const std::int32_t position = order_[rank];
            if (!((startBits[std::size_t(position) >> 6] >> (position & 63)) & 1))
                continue;
            const std::int32_t line = finder.lineAt(position);
            if (earlierBetween(rank, position, lines_.lengths[std::size_t(line)], -1) ||
                earlierBetween(rank, position, lines_.lengths[std::size_t(line)], 1))
                contained[std::size_t(line)] = true;
            if (budget_ < 0)
                return false;
        }
        return true;
    }

private:
    bool earlierBetween(std::size_t rank, std::int32_t start, std::int32_t length, int step) {
        const std::uint8_t *text = lines_.text.data();
        const std::size_t size = order_.size();
        for (std::size_t next = rank + std::size_t(step); next < size && budget_ >= 0;
             next += std::size_t(step)) {
            const std::int32_t other = order_[next];
            if (std::size_t(other) + std::size_t(length) > size ||
                std::memcmp(text + other, text + start, std::size_t(length)) != 0) {
                --budget_;
                return false;
            }
            budget_ -= length + 1;
            if (other < start)
                return true;
        }
        return false;
    }

    const Lines &lines_;
    const std::vector<std::int32_t> &order_;
    std::int64_t budget_;
};

// Lines known to be distinct, so that a text of many copies of a few lines sorts only those few.
std::vector<bool> containedAmongDistinct(const QList<QStringView> &lines) {
    std::vector<bool> contained(std::size_t(lines.size()), false);
    if (lines.size() < 2)
        return contained;
    Lines encoded = encodedLines(lines);
    std::vector<std::int32_t> order(encoded.text.size());
    if (divsufsort(encoded.text.data(), order.data(), std::int32_t(order.size())) != 0)
        throw std::bad_alloc();
    if (NeighbourWalk(encoded, order).run(contained))
        return contained;
    std::fill(contained.begin(), contained.end(), false);
    const std::vector<std::uint32_t> common = commonPrefixes(encoded.text, order);
    encoded.text = {};

    EarlierOccurrences occurrences(encoded, order.size(), contained);
    const std::size_t size = order.size();
    for (std::size_t rank = 0; rank < size; ++rank) {
        if (rank + lookAhead < size)
            __builtin_prefetch(&common[std::size_t(order[rank + lookAhead])]);
        const std::uint32_t value = common[std::size_t(order[rank])];
        occurrences.visit(order[rank], value & ~lineStartMark, value & lineStartMark);
    }
    return contained;
}

} // namespace

std::vector<bool> containedInEarlierLines(const QList<QStringView> &lines) {
    // A copy of an earlier line is contained in it and can contain nothing the first cannot.
    std::vector<bool> contained(std::size_t(lines.size()), false);
    QList<QStringView> firsts;
    std::vector<qsizetype> firstIndexes;
    // An open-addressed table of the first copies' indexes: one block of memory, which goes
    // back to the system before the sort needs its own.
    std::size_t tableSize = 16;
    while (tableSize < std::size_t(lines.size()) * 2)
        tableSize *= 2;
    std::vector<qsizetype> table(tableSize, -1);
    for (qsizetype index = 0; index < lines.size(); ++index) {
        std::size_t slot = qHash(lines[index]) & (tableSize - 1);
        while (table[slot] >= 0 && lines[table[slot]] != lines[index])
            slot = (slot + 1) & (tableSize - 1);
        if (table[slot] >= 0) {
            contained[std::size_t(index)] = true;
        } else {
            table[slot] = index;
            firsts << lines[index];
            firstIndexes.push_back(index);
        }
    }
    table = {};
    const std::vector<bool> firstContained = containedAmongDistinct(firsts);
    for (std::size_t first = 0; first < firstIndexes.size(); ++first) {
        if (firstContained[first])
            contained[std::size_t(firstIndexes[first])] = true;
    }
    return contained;
}

} // namespace tavrel
