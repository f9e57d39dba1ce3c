#include "preview/PageView.h"

#include "render/PageEngine.h"
#include "render/PageReplay.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <cmath>

namespace tavrel {

namespace {

const QColor DeskColor(128, 128, 128);
const QColor ShadowColor(64, 64, 64);
const QColor CurrentFrameColor(40, 100, 200);
const QColor MarkColor(220, 0, 0);

} // namespace

PageView::PageView(const PageEngine &engine, QWidget *parent)
    : QAbstractScrollArea(parent)
    , m_engine(engine) {
    setObjectName(QStringLiteral("vpPrintPreview"));
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setAutoFillBackground(false);
    horizontalScrollBar()->setSingleStep(20);
    verticalScrollBar()->setSingleStep(20);
    relayout();
}

QPoint PageView::offset() const {
    return {horizontalScrollBar()->value(), verticalScrollBar()->value()};
}

void PageView::relayout() {
    std::vector<QSizeF> sizes;
    sizes.reserve(m_engine.pages().size());
    for (const Page &page : m_engine.pages())
        sizes.emplace_back(page.width, page.height);
    m_layout =
        layoutPreviewPages(sizes, m_mode, m_percent, viewport()->size(), double(logicalDpiX()));
    // New ranges may move the scroll bars; that is not the user scrolling to another page.
    const bool wasScrolling = m_scrolling;
    m_scrolling = true;
    updateScrollBars();
    m_scrolling = wasScrolling;
    const int count = pageCount();
    if (count == 0)
        setCurrent(0);
    else if (m_currentPage < 1 || m_currentPage > count)
        setCurrent(std::clamp(m_currentPage, 1, count));
    viewport()->update();
    emit layoutChanged();
}

void PageView::updateScrollBars() {
    const QSize view = viewport()->size();
    const QSize content = m_layout.contentSize;
    horizontalScrollBar()->setRange(0, std::max(0, content.width() - view.width()));
    horizontalScrollBar()->setPageStep(view.width());
    verticalScrollBar()->setRange(0, std::max(0, content.height() - view.height()));
    verticalScrollBar()->setPageStep(view.height());
}

void PageView::refresh() {
    const int before = pageCount();
    relayout();
    // A page laid out while the view waited for the first one becomes the current one.
    if (before == 0 && pageCount() > 0)
        showPage(1);
}

void PageView::reset() {
    m_cache.clear();
    m_mark.reset();
    refresh();
}

void PageView::setZoom(ZoomMode mode, int percent) {
    const int page = m_currentPage;
    m_mode = mode;
    m_percent = percent;
    relayout();
    if (page > 0)
        showPage(page);
}

void PageView::setCurrent(int page) {
    if (page == m_currentPage)
        return;
    m_currentPage = page;
    viewport()->update();
    emit currentPageChanged(page);
}

void PageView::scrollToPage(int page) {
    if (page < 1 || page > pageCount())
        return;
    const QRect &rect = m_layout.pages[std::size_t(page - 1)];
    m_scrolling = true;
    verticalScrollBar()->setValue(rect.top() - PreviewLayout::Gap);
    // Bring the page in horizontally only when it is out of view.
    const int left = horizontalScrollBar()->value();
    const int width = viewport()->width();
    if (rect.left() < left || rect.right() > left + width)
        horizontalScrollBar()->setValue(rect.left() - PreviewLayout::Gap);
    m_scrolling = false;
}

void PageView::showPage(int page) {
    if (page < 1 || page > pageCount())
        return;
    setCurrent(page);
    scrollToPage(page);
}

void PageView::setMark(int page, const QRectF &twips) {
    m_mark = std::make_pair(page, twips);
    scrollMarkIntoView();
    viewport()->update();
}

QRectF PageView::markRect(const QRect &target) const {
    const Page &recorded = m_engine.page(m_mark->first);
    const double sx = target.width() / recorded.width;
    const double sy = target.height() / recorded.height;
    const QRectF &twips = m_mark->second;
    return QRectF(target.left() + twips.left() * sx, target.top() + twips.top() * sy,
                  twips.width() * sx, twips.height() * sy)
        .adjusted(-2, -2, 2, 2);
}

std::optional<QRect> PageView::markOnScreen() const {
    if (!m_mark || m_mark->first > pageCount())
        return std::nullopt;
    const QRect target = m_layout.pages[std::size_t(m_mark->first - 1)].translated(-offset());
    return markRect(target).toAlignedRect();
}

// At a high zoom the match can be far from the top of its page.
void PageView::scrollMarkIntoView() {
    const std::optional<QRect> mark = markOnScreen();
    if (!mark)
        return;
    const QRect view = viewport()->rect();
    m_scrolling = true;
    if (mark->bottom() > view.bottom() || mark->top() < view.top())
        verticalScrollBar()->setValue(verticalScrollBar()->value() + mark->center().y() -
                                      view.height() / 3);
    if (mark->right() > view.right() || mark->left() < view.left())
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() + mark->center().x() -
                                        view.width() / 2);
    m_scrolling = false;
}

void PageView::clearMark() {
    m_mark.reset();
    viewport()->update();
}

void PageView::resizeEvent(QResizeEvent *event) {
    QAbstractScrollArea::resizeEvent(event);
    const int page = m_currentPage;
    relayout();
    if (m_mode != ZoomMode::Percentage && page > 0)
        scrollToPage(page);
}

void PageView::scrollContentsBy(int, int) {
    viewport()->update();
    if (m_scrolling || pageCount() == 0)
        return;
    // The user scrolled: the page in the upper part of the view becomes the current one,
    // unless it shares a row with the current page.
    const int page = m_layout.pageAt(verticalScrollBar()->value() + viewport()->height() * 2 / 5);
    const int columns = m_layout.columns;
    if ((page - 1) / columns != (m_currentPage - 1) / columns)
        setCurrent(page);
}

void PageView::wheelEvent(QWheelEvent *event) {
    if (event->modifiers() & Qt::ControlModifier) {
        const int delta = event->angleDelta().y();
        if (delta != 0)
            emit zoomStepRequested(delta > 0 ? 1 : -1);
        event->accept();
        return;
    }
    QAbstractScrollArea::wheelEvent(event);
}

int PageView::pageAtPoint(QPoint viewportPoint) const {
    const QPoint point = viewportPoint + offset();
    const auto [first, last] = m_layout.pagesBetween(point.y(), point.y());
    for (int index = first; index < last; ++index) {
        if (m_layout.pages[std::size_t(index)].contains(point))
            return index + 1;
    }
    return 0;
}

void PageView::mousePressEvent(QMouseEvent *event) {
    const int page = pageAtPoint(event->position().toPoint());
    if (page > 0)
        setCurrent(page);
    QAbstractScrollArea::mousePressEvent(event);
}

void PageView::mouseDoubleClickEvent(QMouseEvent *event) {
    const int page = pageAtPoint(event->position().toPoint());
    if (page > 0)
        emit pageActivated(page);
}

void PageView::paintEvent(QPaintEvent *event) {
    // The job may have added or cleared pages since the window last looked: let the window
    // catch up first, and never paint pages that are gone.
    if (int(m_engine.pages().size()) != pageCount())
        emit engineOutOfStep();
    const int engineCount = int(m_engine.pages().size());
    if (engineCount < pageCount())
        reset();
    else if (engineCount > pageCount())
        refresh();
    QPainter painter(viewport());
    const QRect exposed = event->rect();
    painter.fillRect(exposed, DeskColor);
    const QPoint origin = offset();
    const auto [first, last] =
        m_layout.pagesBetween(origin.y() + exposed.top(), origin.y() + exposed.bottom());
    for (int index = first; index < last; ++index) {
        const QRect target = m_layout.pages[std::size_t(index)].translated(-origin);
        if (!target.adjusted(0, 0, 3, 3).intersects(exposed))
            continue;
        painter.fillRect(target.translated(3, 3), ShadowColor);
        paintPageAt(painter, index + 1, target, exposed);
        // Several pages in view: frame the current one so navigation can be followed.
        if (index + 1 == m_currentPage && m_layout.columns > 1) {
            painter.setPen(QPen(CurrentFrameColor, 2));
            painter.setBrush(Qt::NoBrush);
            painter.drawRect(target.adjusted(-2, -2, 1, 1));
        }
        if (m_mark && m_mark->first == index + 1)
            paintMark(painter, target);
    }
}

void PageView::paintPageAt(QPainter &painter, int page, const QRect &target, const QRect &exposed) {
    const qreal ratio = devicePixelRatioF();
    const qint64 pixels = qint64(target.width() * ratio) * qint64(target.height() * ratio);
    if (pixels <= LargestCachedImage) {
        painter.drawImage(target.topLeft(), m_cache.image(m_engine, page, target.size(), ratio));
        return;
    }
    // Too big to keep: replay only the part in view, straight onto the screen.
    const Page &recorded = m_engine.page(page);
    painter.save();
    painter.setClipRect(target.intersected(exposed));
    painter.fillRect(target, Qt::white);
    painter.translate(target.topLeft());
    painter.scale(target.width() / recorded.width, target.height() / recorded.height);
    paintPage(painter, m_engine, page);
    painter.restore();
}

void PageView::paintMark(QPainter &painter, const QRect &target) {
    const QRectF box = markRect(target);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(MarkColor, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(box);
    painter.restore();
}

} // namespace tavrel
