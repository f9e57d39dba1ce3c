#include "designer/DesignCanvas.h"

#include "designer/DesignerDocument.h"
#include "designer/FieldList.h"
#include "render/PageBands.h"

#include <QDragEnterEvent>
#include <QHelpEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QToolTip>

#include <cmath>

namespace tavrel {

namespace {

const QString cannotPlace() {
    return QStringLiteral("Cannot place here.");
}

qint32 roundToStep(qint32 value, qint32 origin, qint32 step) {
    return origin + qint32(std::lround(double(value - origin) / step)) * step;
}

} // namespace

DesignCanvas::DesignCanvas(DesignerDocument &document, QWidget *parent)
    : QWidget(parent)
    , m_document(document) {
    setObjectName(QStringLiteral("picPage"));
    setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(true);
    setMouseTracking(true);
    connect(&m_document, &DesignerDocument::layoutChanged, this, [this] {
        updateGeometry();
        update();
        // A warning that is no longer true goes; a new one shows at once.
        const QString bounds = outOfBoundsText();
        if (!bounds.isEmpty() || !m_boundsText.isEmpty())
            emit statusText(bounds);
        m_boundsText = bounds;
    });
    connect(&m_document, &DesignerDocument::selectionChanged, this, qOverload<>(&QWidget::update));
}

void DesignCanvas::setMargins(qint32 left, qint32 top, qint32 right, qint32 bottom) {
    m_margins[0] = left;
    m_margins[1] = top;
    m_margins[2] = right;
    m_margins[3] = bottom;
    update();
}

void DesignCanvas::setZoom(double zoom) {
    // Low enough for a whole sheet in a small window at a large display scale.
    m_zoom = std::clamp(zoom, 0.1, 4.0);
    updateGeometry();
    resize(sizeHint());
    update();
}

double DesignCanvas::scale() const {
    return m_zoom * 96.0 / 1440.0;
}

void DesignCanvas::setNewBoxFont(const QString &name, qint16 size) {
    m_newFontName = name;
    m_newFontSize = size;
}

PageArea DesignCanvas::pageArea() const {
    PageArea area = PageArea::letter(m_document.layout().other.landscape, 0);
    area.marginLeft = m_margins[0];
    area.marginTop = m_margins[1];
    area.marginRight = m_margins[2];
    area.marginBottom = m_margins[3];
    return area;
}

QSize DesignCanvas::sizeHint() const {
    const PageArea area = pageArea();
    return {PageOffset * 2 + int(area.pageWidth * scale()),
            PageOffset * 2 + int(area.pageHeight * scale())};
}

QPoint DesignCanvas::toWidget(QPointF pageTwips) const {
    return {PageOffset + int(std::lround(pageTwips.x() * scale())),
            PageOffset + int(std::lround(pageTwips.y() * scale()))};
}

QPointF DesignCanvas::toPage(QPointF widgetPoint) const {
    return {(widgetPoint.x() - PageOffset) / scale(), (widgetPoint.y() - PageOffset) / scale()};
}

QRect DesignCanvas::widgetRect(const QRect &pageRect) const {
    const QPoint topLeft = toWidget(pageRect.topLeft());
    const QPoint bottomRight =
        toWidget(QPointF(pageRect.x() + pageRect.width(), pageRect.y() + pageRect.height()));
    return QRect(topLeft, QSize(std::max(1, bottomRight.x() - topLeft.x()),
                                std::max(1, bottomRight.y() - topLeft.y())));
}

PictureExtent DesignCanvas::pictures() const {
    return printedPictures(m_pictureSizes);
}

qint32 DesignCanvas::bandHeight(const QString &container) const {
    return m_document.layout().bandHeight(container, pictures());
}

QRect DesignCanvas::boxPageRect(int slot) const {
    const TemplateLayout &layout = m_document.layout();
    const BoxInfo &box = layout.box(slot);
    const PictureExtent sizes = pictures();
    const QPoint origin = layout.containerOrigin(box.container, pageArea(), sizes);
    return layout.printedRect(box, sizes).translated(origin);
}

QRect DesignCanvas::linePageRect(int slot) const {
    const TemplateLayout &layout = m_document.layout();
    const LineInfo &line = layout.line(slot);
    const QPoint origin = layout.containerOrigin(line.container, pageArea(), pictures());
    return {origin.x() + line.left, origin.y() + line.top, line.width, std::max(1, line.height)};
}

QRect DesignCanvas::rectPageRect(int slot) const {
    const TemplateLayout &layout = m_document.layout();
    const PrintRect &rect = layout.rect(slot);
    const QPoint origin = layout.containerOrigin(Container::mainPort(), pageArea(), pictures());
    return {origin.x() + int(std::lround(rect.left)), origin.y() + int(std::lround(rect.top)),
            int(std::lround(rect.width)), int(std::lround(rect.height))};
}

QRect DesignCanvas::centerMarkerRect() const {
    const PageArea area = pageArea();
    const QPoint centre = toWidget(QPointF(area.pageWidth / 2.0, area.pageHeight / 2.0));
    return {centre.x() - 6, centre.y() - 6, 13, 13};
}

QString DesignCanvas::toolTipAt(QPoint widgetPoint) const {
    if (centerMarkerRect().contains(widgetPoint))
        return QStringLiteral("Center of the page");
    const Hit hit = hitTest(widgetPoint);
    if (hit.kind == Hit::Kind::Box)
        return m_document.layout().box(hit.slot).toolTipText;
    return {};
}

bool DesignCanvas::event(QEvent *event) {
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const QString tip = toolTipAt(help->pos());
        if (tip.isEmpty())
            QToolTip::hideText();
        else
            QToolTip::showText(help->globalPos(), tip, this);
        return true;
    }
    return QWidget::event(event);
}

QRect DesignCanvas::handleRect(const QRect &widgetRect) const {
    return {widgetRect.right() - 3, widgetRect.bottom() - 3, 8, 8};
}

DesignCanvas::Hit DesignCanvas::hitTest(QPoint widgetPoint) const {
    const TemplateLayout &layout = m_document.layout();
    const DesignerSelection &selection = m_document.selection();
    if (selection.boxes.size() == 1 &&
        handleRect(widgetRect(boxPageRect(selection.boxes.first()))).contains(widgetPoint))
        return {Hit::Kind::Handle, selection.boxes.first()};
    if (selection.line != 0 &&
        handleRect(widgetRect(linePageRect(selection.line))).contains(widgetPoint))
        return {Hit::Kind::Handle, -selection.line};
    if (selection.rect != 0 &&
        handleRect(widgetRect(rectPageRect(selection.rect))).contains(widgetPoint))
        return {Hit::Kind::Handle, 1000 + selection.rect};
    // Drawn last, so hit first.
    for (int slot = TemplateLayout::LineCapacity; slot >= 1; --slot) {
        if (layout.line(slot).placed &&
            widgetRect(linePageRect(slot)).adjusted(0, -3, 0, 3).contains(widgetPoint))
            return {Hit::Kind::Line, slot};
    }
    for (int slot = TemplateLayout::BoxCapacity; slot >= 1; --slot) {
        if (layout.box(slot).placed && widgetRect(boxPageRect(slot)).contains(widgetPoint))
            return {Hit::Kind::Box, slot};
    }
    // A rectangle is grabbed by its border so that the boxes inside it stay clickable.
    for (int slot = TemplateLayout::RectCapacity; slot >= 1; --slot) {
        if (!layout.rect(slot).rectVisible)
            continue;
        const QRect r = widgetRect(rectPageRect(slot));
        if (r.adjusted(-3, -3, 3, 3).contains(widgetPoint) &&
            !r.adjusted(4, 4, -4, -4).contains(widgetPoint))
            return {Hit::Kind::Rect, slot};
    }
    return {};
}

TemplateLayout DesignCanvas::layoutWithout(const QList<int> &picked) const {
    TemplateLayout layout = m_document.layout();
    for (int slot : picked)
        LayoutEdits::clearBox(layout, slot);
    return layout;
}

qint32 DesignCanvas::snapped(qint32 value, bool freely) const {
    return freely ? value : roundToStep(value, 0, SnapStep);
}

QPoint DesignCanvas::snapMove(QPoint delta, const QRect &anchor, const QList<int> &moving,
                              bool freely) const {
    if (freely)
        return delta;
    const PageArea area = pageArea();
    QPoint target = anchor.topLeft() + delta;
    target.setX(roundToStep(target.x(), area.marginLeft, SnapStep));
    target.setY(roundToStep(target.y(), area.marginTop, SnapStep));
    // Edges of other boxes win over the grid when they are within a few pixels.
    const qint32 reach = qint32(6 / scale());
    qint32 bestX = reach + 1;
    qint32 bestY = reach + 1;
    const QPoint raw = anchor.topLeft() + delta;
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        if (!m_document.layout().box(slot).placed || moving.contains(slot))
            continue;
        const QRect other = boxPageRect(slot);
        const qint32 xs[] = {other.x(), other.x() + other.width(), other.x() - anchor.width(),
                             other.x() + other.width() - anchor.width()};
        for (qint32 x : xs) {
            if (std::abs(x - raw.x()) < std::abs(bestX)) {
                bestX = x - raw.x();
                target.setX(x);
            }
        }
        const qint32 ys[] = {other.y(), other.y() + other.height(), other.y() - anchor.height(),
                             other.y() + other.height() - anchor.height()};
        for (qint32 y : ys) {
            if (std::abs(y - raw.y()) < std::abs(bestY)) {
                bestY = y - raw.y();
                target.setY(y);
            }
        }
    }
    return target - anchor.topLeft();
}

std::optional<BoxInfo> DesignCanvas::newBox(const NewBoxRequest &request) {
    if (m_document.layout().freeBoxSlot() == TemplateLayout::NoFreeBoxSlot) {
        emit statusText(QStringLiteral("Ran out of index"));
        return std::nullopt;
    }
    NewBoxRequest withFont = request;
    withFont.fontName = m_newFontName;
    withFont.fontSize = m_newFontSize;
    BoxInfo box = LayoutEdits::makeBox(withFont);
    // A logo picture chosen before the logo box was placed is the new box's picture.
    if (box.logo && !m_document.logoFile().isEmpty()) {
        box.logoFile = m_document.logoFile();
        const QRect printed = m_document.layout().printedRect(box, pictures());
        box.width = box.defaultWidth = printed.width();
        box.height = box.defaultHeight = printed.height();
    }
    return box;
}

int DesignCanvas::placeNewBox(const NewBoxRequest &request, QPoint widgetPoint) {
    const std::optional<BoxInfo> made = newBox(request);
    if (!made)
        return TemplateLayout::NoFreeBoxSlot;
    const BoxInfo &box = *made;
    TemplateLayout layout = m_document.layout();
    const QPointF page = toPage(widgetPoint);
    const PageArea area = pageArea();
    const QRect pageRect(roundToStep(qint32(page.x()), area.marginLeft, SnapStep),
                         roundToStep(qint32(page.y()), area.marginTop, SnapStep), box.width,
                         box.height);
    const Landing landing = land(layout, box, pageRect, {});
    if (!landing.allowed) {
        emit statusText(cannotPlace());
        return TemplateLayout::NoFreeBoxSlot;
    }
    const int slot = LayoutEdits::placeBox(layout, box, landing.container, landing.position.x(),
                                           landing.position.y());
    m_document.change(layout, QStringLiteral("Place %1").arg(box.caption));
    m_document.selectBoxes({slot});
    emit statusText(outOfBoundsText());
    return slot;
}

int DesignCanvas::placeNewBoxSomewhere(const NewBoxRequest &request) {
    const std::optional<BoxInfo> made = newBox(request);
    if (!made)
        return TemplateLayout::NoFreeBoxSlot;
    const BoxInfo &box = *made;
    TemplateLayout layout = m_document.layout();
    const PageArea area = pageArea();
    QStringList containers{Container::mainPort()};
    if (LayoutEdits::fitsContainer(box, Container::header()) && !box.notes)
        containers.prepend(Container::header());
    for (const QString &container : containers) {
        const qint32 bottom = container == Container::header()
                                  ? layout.bandHeight(container, pictures()) + box.height
                                  : area.printableBottom() - area.marginTop;
        for (qint32 top = 0; top + box.height <= bottom; top += SnapStep) {
            for (qint32 left = 0; left + box.width <= area.printableWidth(); left += SnapStep) {
                if (!allowedAt(layout, box, container, QRect(left, top, box.width, box.height), {}))
                    continue;
                const int slot = LayoutEdits::placeBox(layout, box, container, left, top);
                m_document.change(layout, QStringLiteral("Place %1").arg(box.caption));
                m_document.selectBoxes({slot});
                return slot;
            }
        }
    }
    emit statusText(cannotPlace());
    return TemplateLayout::NoFreeBoxSlot;
}

void DesignCanvas::nudge(qint32 dx, qint32 dy, bool resize) {
    const DesignerSelection &selection = m_document.selection();
    TemplateLayout layout = m_document.layout();
    if (m_nudgeMergeId == 0)
        m_nudgeMergeId = m_document.newMergeId();
    for (int slot : selection.boxes) {
        BoxInfo &box = layout.box(slot);
        QRect r = layout.printedRect(box, pictures());
        if (resize)
            r = QRect(box.left, box.top, std::max(MinimumSide, box.width + dx),
                      std::max(MinimumSide, box.height + dy));
        else
            r.translate(dx, dy);
        if (!allowedAt(layout, box, box.container, r, selection.boxes)) {
            emit statusText(cannotPlace());
            return;
        }
        box.left = r.x();
        box.top = r.y();
        if (resize) {
            box.width = r.width();
            box.height = r.height();
            box.resized = true;
            box.resizedWidth = box.width;
            box.resizedHeight = box.height;
        }
    }
    if (selection.line != 0) {
        LineInfo &line = layout.line(selection.line);
        if (resize) {
            // Left and right set the length, up and down the thickness.
            line.width = std::max(MinimumSide, line.width + dx);
            line.height = std::max(MinimumLineThickness, line.height + dy);
        } else {
            line.left = std::max(0, line.left + dx);
            line.top = std::max(0, line.top + dy);
            line.lineY = line.top;
        }
        LayoutEdits::clampLine(line, pageArea());
    }
    if (selection.rect != 0) {
        PrintRect &rect = layout.rect(selection.rect);
        if (resize) {
            rect.width = std::max<float>(MinimumSide, rect.width + float(dx));
            rect.height = std::max<float>(MinimumSide, rect.height + float(dy));
        } else {
            rect.left = std::max(0.0f, rect.left + float(dx));
            rect.top = std::max(0.0f, rect.top + float(dy));
        }
        LayoutEdits::clampRect(rect, pageArea());
        LayoutEdits::recordRectPlacement(rect);
    }
    LayoutEdits::assignLevels(layout);
    emit statusText(outOfBoundsText());
    m_document.change(layout, resize ? QStringLiteral("Resize") : QStringLiteral("Move"),
                      m_nudgeMergeId);
}

void DesignCanvas::keyPressEvent(QKeyEvent *event) {
    const bool resize = event->modifiers() & Qt::ShiftModifier;
    const qint32 step = (event->modifiers() & Qt::ControlModifier) ? 15 : SnapStep;
    switch (event->key()) {
    case Qt::Key_Left:
        nudge(-step, 0, resize);
        return;
    case Qt::Key_Right:
        nudge(step, 0, resize);
        return;
    case Qt::Key_Up:
        nudge(0, -step, resize);
        return;
    case Qt::Key_Down:
        nudge(0, step, resize);
        return;
    case Qt::Key_Delete: {
        const DesignerSelection &selection = m_document.selection();
        if (!selection.boxes.isEmpty())
            emit commandWanted(QStringLiteral("mnuDeleteBox"));
        else if (selection.line != 0)
            emit commandWanted(QStringLiteral("mnuDeleteLine"));
        else if (selection.rect != 0)
            emit commandWanted(QStringLiteral("mnuDeleteRectangle"));
        return;
    }
    case Qt::Key_Escape:
        m_document.setSelection({});
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace tavrel
