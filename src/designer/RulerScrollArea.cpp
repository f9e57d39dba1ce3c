#include "designer/RulerScrollArea.h"

#include "designer/DesignCanvas.h"

#include <QEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <cmath>

namespace tavrel {

namespace {

const QColor rulerBackground(240, 240, 240);
const QColor rulerInk(90, 90, 90);

// One ruler: ticks every eighth of an inch, longer at quarters, halves and inches, with the
// inch numbers. Positions come from the canvas, so zoom and orientation need nothing here.
class Ruler : public QWidget {
public:
    Ruler(DesignCanvas *canvas, Qt::Orientation orientation, QWidget *parent)
        : QWidget(parent)
        , m_canvas(canvas)
        , m_orientation(orientation) {
        setObjectName(orientation == Qt::Horizontal ? QStringLiteral("rulerTop")
                                                    : QStringLiteral("rulerLeft"));
    }

protected:
    void paintEvent(QPaintEvent *) override {
        QPainter painter(this);
        painter.fillRect(rect(), rulerBackground);
        painter.setPen(rulerInk);
        const bool horizontal = m_orientation == Qt::Horizontal;
        const int size = RulerScrollArea::RulerSize;
        if (horizontal)
            painter.drawLine(0, size - 1, width(), size - 1);
        else
            painter.drawLine(size - 1, 0, size - 1, height());
        QFont font = painter.font();
        font.setPixelSize(9);
        painter.setFont(font);
        // Where the canvas's own origin is in this ruler's coordinates.
        const QPoint origin = m_canvas->mapTo(parentWidget(), QPoint(0, 0)) - pos();
        const auto area = m_canvas->pageArea();
        const qint32 extent = horizontal ? area.pageWidth : area.pageHeight;
        for (qint32 t = 0; t <= extent; t += 180) {
            const QPoint point = m_canvas->toWidget(QPointF(t, t)) + origin;
            const int at = horizontal ? point.x() : point.y();
            const int length = t % 1440 == 0 ? 10 : t % 720 == 0 ? 7 : t % 360 == 0 ? 5 : 3;
            if (horizontal)
                painter.drawLine(at, size - length, at, size);
            else
                painter.drawLine(size - length, at, size, at);
            if (t % 1440 == 0 && t > 0) {
                const QString inch = QString::number(t / 1440);
                if (horizontal)
                    painter.drawText(at + 2, 10, inch);
                else
                    painter.drawText(2, at + 10, inch);
            }
        }
    }

private:
    DesignCanvas *m_canvas;
    Qt::Orientation m_orientation;
};

class RulerCorner : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *) override {
        QPainter painter(this);
        painter.fillRect(rect(), QColor(225, 225, 225));
        painter.setPen(rulerInk);
        QFont font = painter.font();
        font.setPixelSize(9);
        painter.setFont(font);
        painter.drawText(rect(), Qt::AlignCenter, QStringLiteral("in"));
    }
};

} // namespace

RulerScrollArea::RulerScrollArea(DesignCanvas *canvas, QWidget *parent)
    : QScrollArea(parent)
    , m_canvas(canvas)
    , m_top(new Ruler(canvas, Qt::Horizontal, this))
    , m_left(new Ruler(canvas, Qt::Vertical, this))
    , m_corner(new RulerCorner(this)) {
    setViewportMargins(RulerSize, RulerSize, 0, 0);
    setWidget(canvas);
    setWidgetResizable(false);
    setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    // Scrolling, a new page size or orientation, and zoom all move the canvas.
    const auto repaint = [this] {
        m_top->update();
        m_left->update();
    };
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, repaint);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, repaint);
    canvas->installEventFilter(this);
    placeRulers();
}

void RulerScrollArea::resizeEvent(QResizeEvent *event) {
    QScrollArea::resizeEvent(event);
    placeRulers();
}

bool RulerScrollArea::eventFilter(QObject *watched, QEvent *event) {
    // Ctrl+wheel over the page zooms before the page or the view scroll with it.
    if (watched == m_canvas && event->type() == QEvent::Wheel) {
        auto *wheel = static_cast<QWheelEvent *>(event);
        if (wheel->modifiers() & Qt::ControlModifier) {
            zoomByWheel(wheel->angleDelta().y(), m_canvas->mapTo(viewport(), wheel->position()));
            return true;
        }
    }
    if (watched == m_canvas && (event->type() == QEvent::Move || event->type() == QEvent::Resize)) {
        m_top->update();
        m_left->update();
    }
    return QScrollArea::eventFilter(watched, event);
}

void RulerScrollArea::wheelEvent(QWheelEvent *event) {
    if (!(event->modifiers() & Qt::ControlModifier)) {
        QScrollArea::wheelEvent(event);
        return;
    }
    // The view hands its own wheel events on here, in its own coordinates.
    zoomByWheel(event->angleDelta().y(), event->position());
    event->accept();
}

void RulerScrollArea::zoomByWheel(int delta, QPointF viewportPoint) {
    if (delta == 0)
        return;
    // One notch of a wheel (120) is a tenth more or less; touch pads send smaller deltas.
    zoomAround(m_canvas->zoom() * std::pow(1.1, delta / 120.0), viewportPoint);
}

void RulerScrollArea::zoomAround(double zoom, QPointF viewportPoint) {
    const QPointF canvasPoint = viewportPoint - QPointF(m_canvas->pos());
    const QPointF page = m_canvas->toPage(canvasPoint);
    m_canvas->setZoom(zoom);
    // The canvas resizes at once, and the scroll bars follow its new size at once too.
    const QPoint moved = m_canvas->toWidget(page);
    horizontalScrollBar()->setValue(int(std::lround(moved.x() - viewportPoint.x())));
    verticalScrollBar()->setValue(int(std::lround(moved.y() - viewportPoint.y())));
    emit zoomChanged(m_canvas->zoom());
}

void RulerScrollArea::zoomKeepingCentre(double zoom) {
    zoomAround(zoom, QRectF(viewport()->rect()).center());
}

double RulerScrollArea::fitWidthZoom() const {
    const PageArea area = m_canvas->pageArea();
    // The sheet is long at a width that fills the view, so the vertical bar will be there.
    int width = viewport()->width();
    if (!verticalScrollBar()->isVisible())
        width -= verticalScrollBar()->sizeHint().width();
    const double pixelsPerTwipAtOne = m_canvas->scale() / m_canvas->zoom();
    return (width - 2 * DesignCanvas::PageOffset) / (area.pageWidth * pixelsPerTwipAtOne);
}

double RulerScrollArea::fitPageZoom() const {
    const PageArea area = m_canvas->pageArea();
    // The whole sheet fits, so neither bar will be there.
    int width = viewport()->width();
    int height = viewport()->height();
    if (verticalScrollBar()->isVisible())
        width += verticalScrollBar()->width();
    if (horizontalScrollBar()->isVisible())
        height += horizontalScrollBar()->height();
    const double pixelsPerTwipAtOne = m_canvas->scale() / m_canvas->zoom();
    return std::min((width - 2 * DesignCanvas::PageOffset) / (area.pageWidth * pixelsPerTwipAtOne),
                    (height - 2 * DesignCanvas::PageOffset) /
                        (area.pageHeight * pixelsPerTwipAtOne));
}

void RulerScrollArea::zoomToFitPage() {
    zoomKeepingCentre(fitPageZoom());
}

void RulerScrollArea::zoomToFitWidth() {
    zoomKeepingCentre(fitWidthZoom());
    // Should the bars have come or gone otherwise than foreseen, once more with the real view.
    if (std::abs(m_canvas->width() - viewport()->width()) > 1)
        zoomKeepingCentre(fitWidthZoom());
}

void RulerScrollArea::placeRulers() {
    const QRect view = viewport()->geometry();
    m_corner->setGeometry(view.left() - RulerSize, view.top() - RulerSize, RulerSize, RulerSize);
    m_top->setGeometry(view.left(), view.top() - RulerSize, view.width(), RulerSize);
    m_left->setGeometry(view.left() - RulerSize, view.top(), RulerSize, view.height());
}

} // namespace tavrel
