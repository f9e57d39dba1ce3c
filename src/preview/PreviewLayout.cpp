#include "preview/PreviewLayout.h"

#include <algorithm>
#include <cmath>

namespace tavrel {

namespace {

constexpr double TwipsPerInch = 1440.0;

struct Extent {
    double width = 0;
    double height = 0;
};

Extent largest(const std::vector<QSizeF> &sizes) {
    Extent e;
    for (const QSizeF &size : sizes) {
        e.width = std::max(e.width, size.width());
        e.height = std::max(e.height, size.height());
    }
    return e;
}

// Pixels per twip for the mode; stretch keeps its own vertical scale.
struct Scale {
    double x = 0;
    double y = 0;
    int columns = 1;
};

Scale scaleFor(const std::vector<QSizeF> &sizes, ZoomMode mode, int percent, QSize viewport,
               double dpi) {
    const Extent big = largest(sizes);
    const double availableWidth = std::max(1, viewport.width() - 2 * PreviewLayout::Gap);
    const double availableHeight = std::max(1, viewport.height() - 2 * PreviewLayout::Gap);
    const double pixelsPerTwip = dpi / TwipsPerInch;
    Scale s;
    switch (mode) {
    case ZoomMode::Percentage:
        s.x = s.y = pixelsPerTwip * percent / 100.0;
        break;
    case ZoomMode::PageWidth:
        s.x = s.y = availableWidth / big.width;
        break;
    case ZoomMode::WholePage:
        s.x = s.y = std::min(availableWidth / big.width, availableHeight / big.height);
        break;
    case ZoomMode::TwoPages:
        s.columns = 2;
        s.x = s.y = std::min((availableWidth - PreviewLayout::Gap) / (2 * big.width),
                             availableHeight / big.height);
        break;
    case ZoomMode::Thumbnail:
        s.x = s.y = PreviewLayout::ThumbnailWidth / big.width;
        s.columns = std::max(1, int((viewport.width() - PreviewLayout::Gap) /
                                    (PreviewLayout::ThumbnailWidth + PreviewLayout::Gap)));
        break;
    case ZoomMode::Stretch:
        s.x = availableWidth / big.width;
        s.y = availableHeight / big.height;
        break;
    }
    // A tiny window must not produce empty pages.
    const double smallest = 16.0 / std::max(big.width, big.height);
    s.x = std::max(s.x, smallest);
    s.y = std::max(s.y, smallest);
    return s;
}

} // namespace

int PreviewLayout::pageAt(int y) const {
    if (pages.empty())
        return 0;
    // Rows are sorted by top; find the last row starting at or above y.
    const auto after = std::upper_bound(pages.begin(), pages.end(), y,
                                        [](int value, const QRect &r) { return value < r.top(); });
    if (after == pages.begin())
        return 1;
    int index = int(after - pages.begin()) - 1;
    while (index > 0 && pages[std::size_t(index - 1)].top() == pages[std::size_t(index)].top())
        --index;
    return index + 1;
}

std::pair<int, int> PreviewLayout::pagesBetween(int top, int bottom) const {
    const int first = pageAt(top);
    if (first == 0)
        return {0, 0};
    int last = first - 1;
    const int count = int(pages.size());
    // Every page of a row shares the row's top; go on until a row starts below the band.
    while (last < count && pages[std::size_t(last)].top() <= bottom)
        ++last;
    return {first - 1, last};
}

PreviewLayout layoutPreviewPages(const std::vector<QSizeF> &pageSizes, ZoomMode mode, int percent,
                                 QSize viewport, double dpi) {
    PreviewLayout layout;
    layout.contentSize = viewport;
    if (pageSizes.empty())
        return layout;
    const Scale s = scaleFor(pageSizes, mode, percent, viewport, dpi);
    layout.columns = s.columns;
    layout.percent = s.x / (dpi / TwipsPerInch) * 100.0;
    layout.pages.reserve(pageSizes.size());

    // First pass: page sizes and row widths; second: centre each row in the content.
    std::vector<QSize> pixels;
    pixels.reserve(pageSizes.size());
    for (const QSizeF &size : pageSizes) {
        pixels.emplace_back(std::max(1, int(std::lround(size.width() * s.x))),
                            std::max(1, int(std::lround(size.height() * s.y))));
    }
    int widestRow = 0;
    const std::size_t count = pixels.size();
    const std::size_t columns = std::size_t(s.columns);
    for (std::size_t row = 0; row < count; row += columns) {
        int width = 0;
        for (std::size_t i = row; i < std::min(count, row + columns); ++i)
            width += pixels[i].width() + (i > row ? PreviewLayout::Gap : 0);
        widestRow = std::max(widestRow, width);
    }
    const int contentWidth = std::max(viewport.width(), widestRow + 2 * PreviewLayout::Gap);
    int y = PreviewLayout::Gap;
    for (std::size_t row = 0; row < count; row += columns) {
        const std::size_t end = std::min(count, row + columns);
        // Thumbnail rows line up as a grid (a short last row stays at the left); other rows
        // are centred on their own.
        int width = widestRow;
        if (mode != ZoomMode::Thumbnail) {
            width = 0;
            for (std::size_t i = row; i < end; ++i)
                width += pixels[i].width() + (i > row ? PreviewLayout::Gap : 0);
        }
        int x = (contentWidth - width) / 2;
        int rowHeight = 0;
        for (std::size_t i = row; i < end; ++i) {
            layout.pages.emplace_back(QPoint(x, y), pixels[i]);
            x += pixels[i].width() + PreviewLayout::Gap;
            rowHeight = std::max(rowHeight, pixels[i].height());
        }
        y += rowHeight + PreviewLayout::Gap;
    }
    layout.contentSize = QSize(contentWidth, std::max(viewport.height(), y));
    return layout;
}

} // namespace tavrel
