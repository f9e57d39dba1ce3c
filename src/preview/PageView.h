#pragma once

#include "preview/PageImageCache.h"
#include "preview/PreviewLayout.h"
#include "preview/ZoomState.h"

#include <QAbstractScrollArea>
#include <QRectF>

#include <optional>

namespace tavrel {

class PageEngine;

// The preview's page area: the engine's pages laid out for the zoom, painted through the page
// replay, only those in view, from a cache of page images. It reads the engine afresh on
// every refresh(), so it can show a document that is still being laid out. The find mark is
// drawn here, over the page image, so it never reaches a printout or an export.
class PageView : public QAbstractScrollArea {
    Q_OBJECT

public:
    // Page images above this many device pixels are painted straight into the view (only the
    // part in view) instead of being cached whole.
    static constexpr qint64 LargestCachedImage = qint64(2400) * 2400;

    explicit PageView(const PageEngine &engine, QWidget *parent = nullptr);

    // Reads the page count and sizes again and repaints; keeps the view where it is.
    void refresh();
    // Forgets every rendered image and the mark: the document was laid out anew.
    void reset();

    void setZoom(ZoomMode mode, int percent);
    ZoomMode zoomMode() const { return m_mode; }
    // The zoom on screen, in percent.
    double shownPercent() const { return m_layout.percent; }

    int pageCount() const { return int(m_layout.pages.size()); }
    int currentPage() const { return m_currentPage; }
    // Makes the page current and scrolls its row to the top of the view.
    void showPage(int page);

    // A rectangle (twips) around found text on a page.
    void setMark(int page, const QRectF &twips);
    void clearMark();
    // Where the mark is on screen (viewport pixels), when there is one.
    std::optional<QRect> markOnScreen() const;
    std::optional<std::pair<int, QRectF>> mark() const { return m_mark; }

    const PreviewLayout &layout() const { return m_layout; }
    const PageImageCache &cache() const { return m_cache; }

signals:
    void currentPageChanged(int page);
    // The layout changed (zoom, window size or pages added); the shown percentage may differ.
    void layoutChanged();
    // Ctrl + wheel: +1 zoom in, -1 zoom out.
    void zoomStepRequested(int direction);
    void pageActivated(int page);
    // About to paint, the view found the engine holding another number of pages.
    void engineOutOfStep();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    void relayout();
    void updateScrollBars();
    void setCurrent(int page);
    void scrollToPage(int page);
    int pageAtPoint(QPoint viewportPoint) const;
    QPoint offset() const;
    void paintPageAt(QPainter &painter, int page, const QRect &target, const QRect &exposed);
    void paintMark(QPainter &painter, const QRect &target);
    QRectF markRect(const QRect &target) const;
    void scrollMarkIntoView();

    const PageEngine &m_engine;
    PageImageCache m_cache;
    PreviewLayout m_layout;
    ZoomMode m_mode = ZoomMode::WholePage;
    int m_percent = 100;
    int m_currentPage = 0;
    bool m_scrolling = false; // the view is being scrolled by showPage, not by the user
    std::optional<std::pair<int, QRectF>> m_mark;
};

} // namespace tavrel
