#pragma once

#include "base/ColorNumber.h"

#include <QString>

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <utility>
#include <variant>
#include <vector>

namespace tavrel {

// The page engine's record of a document: every page is a list of drawing items with final
// geometry in twips (1440 to the inch, measured from the page's top-left corner). Backends only
// replay these items; nothing is laid out again.

// Brush styles (fill of rectangles and text-box backgrounds).
namespace BrushStyles {
constexpr int Solid = 0;
constexpr int Transparent = 1;
constexpr int Horizontal = 2;
constexpr int Vertical = 3;
constexpr int ForwardDiagonal = 4;
constexpr int BackwardDiagonal = 5;
constexpr int Cross = 6;
constexpr int DiagonalCross = 7;
} // namespace BrushStyles

// Pen styles (lines and rectangle borders).
namespace PenStyles {
constexpr int Solid = 0;
constexpr int Dash = 1;
constexpr int Dot = 2;
constexpr int DashDot = 3;
constexpr int DashDotDot = 4;
constexpr int Transparent = 5;
constexpr int InsideFrame = 6;
} // namespace PenStyles

// One broken line of a text item: a range of the item's text and its drawn width in twips.
struct TextLine {
    qint32 start = 0;
    qint32 length = 0;
    float width = 0;
};

// The lines of a text item. Nearly every item is one line (a cell, a caption), so one line is
// held in place and only longer texts take a block of their own: a big job holds millions of
// items, and a heap block per item cost more memory than the item itself.
class TextLines {
public:
    TextLines() = default;
    TextLines(const std::vector<TextLine> &lines) { assign(lines.data(), lines.size()); }
    TextLines(std::initializer_list<TextLine> lines) { assign(lines.begin(), lines.size()); }
    TextLines(const TextLine *lines, std::size_t count) { assign(lines, count); }
    TextLines(const TextLines &other) { assign(other.begin(), other.size()); }
    TextLines(TextLines &&other) noexcept
        : m_one(other.m_one)
        , m_many(std::move(other.m_many))
        , m_size(std::exchange(other.m_size, 0)) {}
    TextLines &operator=(const TextLines &other) {
        if (this != &other)
            assign(other.begin(), other.size());
        return *this;
    }
    TextLines &operator=(TextLines &&other) noexcept {
        m_one = other.m_one;
        m_many = std::move(other.m_many);
        m_size = std::exchange(other.m_size, 0);
        return *this;
    }

    bool empty() const { return m_size == 0; }
    std::size_t size() const { return m_size; }
    const TextLine *begin() const { return m_many ? m_many.get() : &m_one; }
    const TextLine *end() const { return begin() + m_size; }
    const TextLine &operator[](std::size_t i) const { return begin()[i]; }
    const TextLine &front() const { return *begin(); }
    const TextLine &back() const { return begin()[m_size - 1]; }

private:
    void assign(const TextLine *lines, std::size_t count) {
        m_many.reset();
        m_size = quint32(count);
        if (count == 1) {
            m_one = lines[0];
        } else if (count > 1) {
            m_many = std::make_unique<TextLine[]>(count);
            std::copy(lines, lines + count, m_many.get());
        }
    }

    TextLine m_one;                     // the only line, when there is exactly one
    std::unique_ptr<TextLine[]> m_many; // all lines, when there are more
    quint32 m_size = 0;
};

struct TextItem {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;  // the box height; the laid-out height when the box grows to fit
    double textTop = 0; // top of the first line after vertical alignment
    QString text;
    TextLines lines;
    int font = 0; // index into the document's font table
    int align = 0;
    ColorNumber color = BlackColor;
    qint64 background = -1; // colour number of the shaded box, or -1 when not shaded
};

struct LineItem {
    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;
    ColorNumber color = BlackColor;
    int style = PenStyles::Solid;
    double penWidth = 0;
};

struct RectItem {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    ColorNumber penColor = BlackColor;
    int penStyle = PenStyles::Solid;
    double penWidth = 0;
    ColorNumber brushColor = WhiteColor;
    int brushStyle = BrushStyles::Solid;
};

struct PictureItem {
    QString path; // key of the engine's picture cache
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

// Offset of a line inside its box for an alignment code: 0, 3, 6 left; 1, 4, 7 centre; 2, 5, 8
// right. Other codes are left.
inline double horizontalOffset(int align, double boxWidth, double lineWidth) {
    if (align < 0 || align > 8)
        return 0;
    const int horizontal = align % 3;
    return horizontal == 0 ? 0 : (boxWidth - lineWidth) * (horizontal == 1 ? 0.5 : 1.0);
}

using PageItem = std::variant<TextItem, LineItem, RectItem, PictureItem>;

// The items of one page, in drawing order. A big job keeps millions of items, so they are not
// kept as PageItems: nearly all geometry is in whole or in 1/64 twips (font metrics at 1440
// dpi), which a float holds exactly, and texts and lines are stored in compact forms of half
// the size or less. Anything a compact form cannot hold exactly (a coordinate a float would
// round, an out-of-range code) is kept as it came, so reading the items gives back exactly what
// was added. Reading decodes: items come out by value, never by reference.
class DisplayItems {
public:
    class const_iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = PageItem;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = PageItem;

        const_iterator() = default;
        PageItem operator*() const { return m_items->decode(m_at, m_text, m_line, m_other); }
        const_iterator &operator++();
        const_iterator operator++(int) {
            const_iterator was = *this;
            ++*this;
            return was;
        }
        bool operator==(const const_iterator &other) const { return m_at == other.m_at; }

    private:
        friend class DisplayItems;
        const_iterator(const DisplayItems *items, std::size_t at)
            : m_items(items)
            , m_at(at) {}

        const DisplayItems *m_items = nullptr;
        std::size_t m_at = 0;
        // Where the items of each kind before m_at end.
        std::size_t m_text = 0;
        std::size_t m_line = 0;
        std::size_t m_other = 0;
    };

    std::size_t size() const { return m_kinds.size(); }
    bool empty() const { return m_kinds.empty(); }
    const_iterator begin() const { return const_iterator(this, 0); }
    const_iterator end() const { return const_iterator(this, m_kinds.size()); }
    // The i-th item, found by walking the page from its start.
    PageItem operator[](std::size_t i) const;
    PageItem back() const; // of a page with items

    void push_back(TextItem item);
    void push_back(const LineItem &item);
    void push_back(RectItem item);
    void push_back(PictureItem item);
    void push_back(PageItem item);

    // Room for as many items of each kind as another page holds, and room more of each.
    void reserveLike(const DisplayItems &other, std::size_t room);
    // Gives back all room beyond the items and `room` more of each kind.
    void trim(std::size_t room);
    // Text items with a font number below fontIndex's size take fontIndex[font] instead.
    void remapFonts(const std::vector<int> &fontIndex);

    // Every compact text in at most this many bytes (a PageItem takes 128).
    static constexpr std::size_t CompactTextBudget = 56;

private:
    // The kind of an item, with the flags of a compact text.
    enum Kind : quint8 {
        CompactText = 0,
        CompactLine = 1,
        Other = 2,
        KindMask = 3,
        Shaded = 4,    // a compact text with a background
        ManyLines = 8, // a compact text whose lines are in m_textLines
    };

    // A text item whose coordinates are floats, whose colours take 24 bits and whose font and
    // alignment codes 8. Its lines are those of nearly every text: none for an empty text, else
    // one line that is the whole text, and lineRef is that line's width (as float bits). Other
    // lines lie in m_textLines, and lineRef is their first index (upper 24 bits) and count
    // (lower 8 bits).
    struct StoredText {
        QString text;
        float x;
        float y;
        float width;
        float height;
        float textTop;
        quint32 lineRef;
        quint32 colorAndAlign;     // colour in the lower 24 bits, alignment code above
        quint32 backgroundAndFont; // background colour in the lower 24 bits, font number above
    };
    static_assert(sizeof(StoredText) <= CompactTextBudget);

    struct StoredLine {
        float x1;
        float y1;
        float x2;
        float y2;
        float penWidth;
        quint32 colorAndStyle; // colour in the lower 24 bits, pen style above
    };

    bool pushCompact(const TextItem &item);
    bool pushCompact(const LineItem &item);
    PageItem decode(std::size_t at, std::size_t text, std::size_t line, std::size_t other) const;
    TextItem decodeText(const StoredText &stored, quint8 kind) const;

    std::vector<quint8> m_kinds; // one per item, in drawing order
    std::vector<StoredText> m_texts;
    std::vector<TextLine> m_textLines;
    std::vector<StoredLine> m_lines;
    std::vector<PageItem> m_others; // rectangles, pictures and what no compact form holds
};

struct Page {
    double width = 0;
    double height = 0;
    bool landscape = false;
    DisplayItems items;
    QString exportRaw; // raw HTML / RTF text appended while this page was drawn
};

} // namespace tavrel
