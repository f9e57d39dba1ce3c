#include "render/DisplayList.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace tavrel {

namespace {

constexpr quint32 ColorBits = 24;
constexpr quint32 ColorMask = (quint32(1) << ColorBits) - 1;
constexpr int MaxCode = 255; // what the 8 bits above a colour hold
constexpr quint32 LineCountBits = 8;
constexpr std::size_t MaxLineCount = (std::size_t(1) << LineCountBits) - 1;
constexpr std::size_t MaxLineIndex = (std::size_t(1) << (32 - LineCountBits)) - 1;

// value as a float, when the float is exactly value. NaN, infinities and values beyond a
// float's range stay doubles (converting those is not even defined for all of them).
bool exactFloat(double value, float &out) {
    if (!(std::abs(value) <= double(std::numeric_limits<float>::max())))
        return false;
    out = float(value);
    return double(out) == value;
}

bool fitsCode(int code) {
    return code >= 0 && code <= MaxCode;
}

quint32 packed(quint32 color, int code) {
    return color | (quint32(code) << ColorBits);
}

template <typename T> void fit(std::vector<T> &items, std::size_t room) {
    if (items.capacity() <= items.size() + room)
        return;
    std::vector<T> fitted;
    fitted.reserve(items.size() + room);
    std::move(items.begin(), items.end(), std::back_inserter(fitted));
    items = std::move(fitted);
}

} // namespace

DisplayItems::const_iterator &DisplayItems::const_iterator::operator++() {
    switch (m_items->m_kinds[m_at] & KindMask) {
    case CompactText:
        ++m_text;
        break;
    case CompactLine:
        ++m_line;
        break;
    default:
        ++m_other;
        break;
    }
    ++m_at;
    return *this;
}

PageItem DisplayItems::operator[](std::size_t i) const {
    const_iterator it = begin();
    while (it.m_at < i)
        ++it;
    return *it;
}

PageItem DisplayItems::back() const {
    const std::size_t last = m_kinds.size() - 1;
    return decode(last, m_texts.size() - 1, m_lines.size() - 1, m_others.size() - 1);
}

bool DisplayItems::pushCompact(const TextItem &item) {
    StoredText stored;
    if (!exactFloat(item.x, stored.x) || !exactFloat(item.y, stored.y) ||
        !exactFloat(item.width, stored.width) || !exactFloat(item.height, stored.height) ||
        !exactFloat(item.textTop, stored.textTop))
        return false;
    if (item.color > ColorMask || !fitsCode(item.align) || !fitsCode(item.font))
        return false;
    quint8 kind = CompactText;
    quint32 background = 0;
    if (item.background >= 0) {
        if (item.background > qint64(ColorMask))
            return false;
        kind |= Shaded;
        background = quint32(item.background);
    } else if (item.background != -1) {
        return false;
    }
    const TextLines &lines = item.lines;
    const bool whole = item.text.isEmpty() ? lines.empty()
                                           : lines.size() == 1 && lines[0].start == 0 &&
                                                 lines[0].length == item.text.size();
    if (whole) {
        stored.lineRef = lines.empty() ? 0 : std::bit_cast<quint32>(lines[0].width);
    } else {
        if (lines.size() > MaxLineCount || m_textLines.size() > MaxLineIndex)
            return false;
        kind |= ManyLines;
        stored.lineRef = quint32(m_textLines.size() << LineCountBits) | quint32(lines.size());
        m_textLines.insert(m_textLines.end(), lines.begin(), lines.end());
    }
    stored.text = item.text;
    stored.colorAndAlign = packed(item.color, item.align);
    stored.backgroundAndFont = packed(background, item.font);
    m_texts.push_back(std::move(stored));
    m_kinds.push_back(kind);
    return true;
}

bool DisplayItems::pushCompact(const LineItem &item) {
    StoredLine stored;
    if (!exactFloat(item.x1, stored.x1) || !exactFloat(item.y1, stored.y1) ||
        !exactFloat(item.x2, stored.x2) || !exactFloat(item.y2, stored.y2) ||
        !exactFloat(item.penWidth, stored.penWidth))
        return false;
    if (item.color > ColorMask || !fitsCode(item.style))
        return false;
    stored.colorAndStyle = packed(item.color, item.style);
    m_lines.push_back(stored);
    m_kinds.push_back(CompactLine);
    return true;
}

void DisplayItems::push_back(TextItem item) {
    if (pushCompact(item))
        return;
    m_others.emplace_back(std::move(item));
    m_kinds.push_back(Other);
}

void DisplayItems::push_back(const LineItem &item) {
    if (pushCompact(item))
        return;
    m_others.emplace_back(item);
    m_kinds.push_back(Other);
}

void DisplayItems::push_back(RectItem item) {
    m_others.emplace_back(std::move(item));
    m_kinds.push_back(Other);
}

void DisplayItems::push_back(PictureItem item) {
    m_others.emplace_back(std::move(item));
    m_kinds.push_back(Other);
}

void DisplayItems::push_back(PageItem item) {
    std::visit([this](auto &&alternative) { push_back(std::move(alternative)); }, std::move(item));
}

TextItem DisplayItems::decodeText(const StoredText &stored, quint8 kind) const {
    TextItem item;
    item.x = stored.x;
    item.y = stored.y;
    item.width = stored.width;
    item.height = stored.height;
    item.textTop = stored.textTop;
    item.text = stored.text;
    if (kind & ManyLines) {
        const std::size_t first = stored.lineRef >> LineCountBits;
        const std::size_t count = stored.lineRef & MaxLineCount;
        item.lines = TextLines(m_textLines.data() + first, count);
    } else if (!stored.text.isEmpty()) {
        item.lines =
            TextLines{{0, qint32(stored.text.size()), std::bit_cast<float>(stored.lineRef)}};
    }
    item.font = int(stored.backgroundAndFont >> ColorBits);
    item.align = int(stored.colorAndAlign >> ColorBits);
    item.color = stored.colorAndAlign & ColorMask;
    if (kind & Shaded)
        item.background = stored.backgroundAndFont & ColorMask;
    return item;
}

PageItem DisplayItems::decode(std::size_t at, std::size_t text, std::size_t line,
                              std::size_t other) const {
    const quint8 kind = m_kinds[at];
    switch (kind & KindMask) {
    case CompactText:
        return decodeText(m_texts[text], kind);
    case CompactLine: {
        const StoredLine &stored = m_lines[line];
        return LineItem{stored.x1,
                        stored.y1,
                        stored.x2,
                        stored.y2,
                        stored.colorAndStyle & ColorMask,
                        int(stored.colorAndStyle >> ColorBits),
                        stored.penWidth};
    }
    default:
        return m_others[other];
    }
}

void DisplayItems::reserveLike(const DisplayItems &other, std::size_t room) {
    m_kinds.reserve(other.m_kinds.size() + room);
    m_texts.reserve(other.m_texts.size() + room);
    m_lines.reserve(other.m_lines.size() + room);
    if (!other.m_textLines.empty())
        m_textLines.reserve(other.m_textLines.size() + room);
    if (!other.m_others.empty())
        m_others.reserve(other.m_others.size() + room);
}

void DisplayItems::trim(std::size_t room) {
    fit(m_kinds, room);
    fit(m_texts, room);
    fit(m_textLines, room);
    fit(m_lines, room);
    fit(m_others, room);
}

void DisplayItems::remapFonts(const std::vector<int> &fontIndex) {
    const auto mapped = [&fontIndex](int font) {
        return font >= 0 && std::size_t(font) < fontIndex.size() ? fontIndex[std::size_t(font)]
                                                                 : font;
    };
    const bool compactFits = std::all_of(m_texts.begin(), m_texts.end(), [&](const StoredText &t) {
        return fitsCode(mapped(int(t.backgroundAndFont >> ColorBits)));
    });
    if (!compactFits) {
        // A font number grew past what a compact text holds: store the page anew.
        DisplayItems stored;
        stored.reserveLike(*this, 0);
        for (PageItem item : *this) {
            if (auto *text = std::get_if<TextItem>(&item))
                text->font = mapped(text->font);
            stored.push_back(std::move(item));
        }
        *this = std::move(stored);
        return;
    }
    for (StoredText &text : m_texts) {
        const int font = mapped(int(text.backgroundAndFont >> ColorBits));
        text.backgroundAndFont = packed(text.backgroundAndFont & ColorMask, font);
    }
    for (PageItem &item : m_others) {
        if (auto *text = std::get_if<TextItem>(&item))
            text->font = mapped(text->font);
    }
}

} // namespace tavrel
