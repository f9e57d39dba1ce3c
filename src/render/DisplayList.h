#pragma once

#include "base/ColorNumber.h"

#include <QString>

#include <algorithm>
#include <initializer_list>
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

struct Page {
    double width = 0;
    double height = 0;
    bool landscape = false;
    std::vector<PageItem> items;
    QString exportRaw; // raw HTML / RTF text appended while this page was drawn
};

} // namespace tavrel
