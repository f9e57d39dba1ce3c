#pragma once

#include "preview/ZoomState.h"

#include <QRect>
#include <QSize>
#include <QSizeF>

#include <vector>

namespace tavrel {

// Where the preview puts each page, in pixels of the scrollable content: pages one under the
// other ("Percentage", "Whole Page", "Page Width", "Stretch"), in pairs ("Two Pages") or in a
// grid ("Thumbnail"), rows centred, with a gap around every page.
struct PreviewLayout {
    static constexpr int Gap = 12;
    // The width a page gets in "Thumbnail" mode.
    static constexpr int ThumbnailWidth = 170;

    std::vector<QRect> pages; // index 0 is page 1
    QSize contentSize;
    int columns = 1;
    double percent = 100; // the zoom on screen (for "Stretch", the horizontal one)

    // The 1-based page at the left of the row that holds content height y (the nearest row
    // above when y is in a gap); 0 when there are no pages.
    int pageAt(int y) const;
    // Index range [first, last) of the pages whose rows meet the band top..bottom.
    std::pair<int, int> pagesBetween(int top, int bottom) const;
};

// Lays out pages of the given sizes (twips) for a viewport (pixels) at a screen resolution of
// dpi; percent is used in "Percentage" mode only. Fitting modes use one scale for all pages,
// the one at which the largest page fits, so that pages of a report stay in proportion.
PreviewLayout layoutPreviewPages(const std::vector<QSizeF> &pageSizes, ZoomMode mode, int percent,
                                 QSize viewport, double dpi);

} // namespace tavrel
