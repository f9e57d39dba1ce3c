#include "designer/DesignCanvas.h"

#include "designer/DesignerDocument.h"
#include "designer/FieldList.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QMouseEvent>

#include <cmath>

namespace tavrel {

namespace {

const QString cannotPlace() {
    return QStringLiteral("Cannot place here.");
}

QPoint pagePoint(const QPointF &point) {
    return {int(std::lround(point.x())), int(std::lround(point.y()))};
}

QRect dragRectToRect(const DragRect &drag) {
    const ControlGeometry g = drag.SetCtrlToRect();
    return {g.left, g.top, g.width, g.height};
}

} // namespace

void DesignCanvas::mousePressEvent(QMouseEvent *event) {
    setFocus();
    m_nudgeMergeId = 0;
    const QPoint widgetPoint = event->position().toPoint();
    const Hit hit = hitTest(widgetPoint);
    m_pressPage = pagePoint(toPage(event->position()));
    DesignerSelection selection = m_document.selection();
    const bool adding = event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier);

    if (event->button() == Qt::RightButton) {
        QString element = QStringLiteral("page");
        if (hit.kind == Hit::Kind::Box ||
            (hit.kind == Hit::Kind::Handle && hit.slot > 0 && hit.slot < 1000)) {
            if (!selection.boxes.contains(hit.slot))
                m_document.selectBoxes({hit.slot});
            element = QStringLiteral("box");
        } else if (hit.kind == Hit::Kind::Line) {
            m_document.setSelection({{}, hit.slot, 0});
            element = QStringLiteral("line");
        } else if (hit.kind == Hit::Kind::Rect) {
            m_document.setSelection({{}, 0, hit.slot});
            element = QStringLiteral("rect");
        }
        emit contextMenuWanted(element, event->globalPosition().toPoint());
        return;
    }
    if (event->button() != Qt::LeftButton)
        return;

    m_moveDelta = {};
    m_dragAllowed = true;
    switch (hit.kind) {
    case Hit::Kind::Handle:
        if (hit.slot < 0) {
            m_mode = Mode::ResizeLine;
            m_dragSlot = -hit.slot;
            m_anchorStart = linePageRect(m_dragSlot);
        } else if (hit.slot > 1000) {
            m_mode = Mode::ResizeRect;
            m_dragSlot = hit.slot - 1000;
            m_anchorStart = rectPageRect(m_dragSlot);
        } else {
            m_mode = Mode::ResizeBox;
            m_dragSlot = hit.slot;
            m_anchorStart = boxPageRect(m_dragSlot);
        }
        break;
    case Hit::Kind::Box:
        if (adding) {
            if (selection.boxes.contains(hit.slot))
                selection.boxes.removeAll(hit.slot);
            else
                selection.boxes.append(hit.slot);
            selection.line = selection.rect = 0;
            m_document.setSelection(selection);
            if (!m_document.selection().boxes.contains(hit.slot))
                return;
        } else if (!selection.boxes.contains(hit.slot)) {
            m_document.selectBoxes({hit.slot});
        }
        m_mode = Mode::MoveBoxes;
        m_dragSlot = hit.slot;
        m_anchorStart = boxPageRect(hit.slot);
        break;
    case Hit::Kind::Line:
        m_document.setSelection({{}, hit.slot, 0});
        m_mode = Mode::MoveLine;
        m_dragSlot = hit.slot;
        m_anchorStart = linePageRect(hit.slot);
        break;
    case Hit::Kind::Rect:
        m_document.setSelection({{}, 0, hit.slot});
        m_mode = Mode::MoveRect;
        m_dragSlot = hit.slot;
        m_anchorStart = rectPageRect(hit.slot);
        break;
    case Hit::Kind::None:
        if (!adding)
            m_document.setSelection({});
        m_mode = Mode::RubberBand;
        m_anchorStart = QRect(m_pressPage, QSize(0, 0));
        break;
    }
    m_drag.SetRectToCtrl(
        {m_anchorStart.x(), m_anchorStart.y(), m_anchorStart.width(), m_anchorStart.height()});
    m_pressOffset = m_pressPage - m_anchorStart.topLeft();
}

void DesignCanvas::mouseMoveEvent(QMouseEvent *event) {
    if (m_mode == Mode::None) {
        const Hit hit = hitTest(event->position().toPoint());
        setCursor(hit.kind == Hit::Kind::Handle ? Qt::SizeFDiagCursor
                  : hit.kind == Hit::Kind::None ? Qt::ArrowCursor
                                                : Qt::SizeAllCursor);
        return;
    }
    const QPoint page = pagePoint(toPage(event->position()));
    const bool freely = event->modifiers() & Qt::AltModifier;
    const QPoint delta = page - m_pressPage;
    switch (m_mode) {
    case Mode::MoveBoxes: {
        m_moveDelta = snapMove(delta, m_anchorStart, m_document.selection().boxes, freely);
        m_drag.SetRectToCtrl({m_anchorStart.x() + m_moveDelta.x(),
                              m_anchorStart.y() + m_moveDelta.y(), m_anchorStart.width(),
                              m_anchorStart.height()});
        const TemplateLayout without = layoutWithout(m_document.selection().boxes);
        m_dragAllowed = true;
        for (int slot : m_document.selection().boxes) {
            const QRect target = boxPageRect(slot).translated(m_moveDelta);
            if (!land(without, m_document.layout().box(slot), target, {}).allowed)
                m_dragAllowed = false;
        }
        emit statusText(m_dragAllowed ? outOfBoundsText() : cannotPlace());
        break;
    }
    case Mode::MoveLine:
    case Mode::MoveRect:
        m_moveDelta = freely ? delta : QPoint(snapped(delta.x(), false), snapped(delta.y(), false));
        m_drag.SetRectToCtrl({m_anchorStart.x() + m_moveDelta.x(),
                              m_anchorStart.y() + m_moveDelta.y(), m_anchorStart.width(),
                              m_anchorStart.height()});
        break;
    case Mode::ResizeBox:
    case Mode::ResizeRect:
    case Mode::ResizeLine: {
        const PageArea area = pageArea();
        m_drag.Right =
            freely ? page.x() : area.marginLeft + snapped(page.x() - area.marginLeft, false);
        if (m_mode != Mode::ResizeLine)
            m_drag.Bottom =
                freely ? page.y() : area.marginTop + snapped(page.y() - area.marginTop, false);
        m_drag.NormalizeRect();
        if (m_drag.Width() < MinimumSide)
            m_drag.Right = m_drag.Left + MinimumSide;
        if (m_mode != Mode::ResizeLine && m_drag.Height() < MinimumSide)
            m_drag.Bottom = m_drag.Top + MinimumSide;
        if (m_mode == Mode::ResizeBox) {
            const BoxInfo &box = m_document.layout().box(m_dragSlot);
            const QRect r = dragRectToRect(m_drag);
            m_dragAllowed = allowedAt(m_document.layout(), box, box.container,
                                      QRect(QPoint(box.left, box.top), r.size()), {m_dragSlot});
            emit statusText(m_dragAllowed ? outOfBoundsText() : cannotPlace());
        }
        break;
    }
    case Mode::RubberBand:
        m_drag.Left = m_pressPage.x();
        m_drag.Top = m_pressPage.y();
        m_drag.Right = page.x();
        m_drag.Bottom = page.y();
        m_drag.NormalizeRect();
        break;
    case Mode::None:
        break;
    }
    update();
}

void DesignCanvas::mouseReleaseEvent(QMouseEvent *event) {
    const Mode mode = m_mode;
    m_mode = Mode::None;
    switch (mode) {
    case Mode::MoveBoxes:
    case Mode::MoveLine:
    case Mode::MoveRect:
        finishMove(mode == Mode::MoveBoxes ? m_dragAllowed : true);
        break;
    case Mode::ResizeBox:
    case Mode::ResizeLine:
    case Mode::ResizeRect:
        m_mode = mode;
        finishResize();
        m_mode = Mode::None;
        break;
    case Mode::RubberBand:
        finishRubberBand(event->modifiers());
        break;
    case Mode::None:
        break;
    }
    update();
}

void DesignCanvas::finishMove(bool commit) {
    if (m_moveDelta.isNull())
        return;
    if (!commit) {
        // The boxes stay where they were; the status text says why.
        return;
    }
    const DesignerSelection selection = m_document.selection();
    TemplateLayout layout = m_document.layout();
    if (!selection.boxes.isEmpty()) {
        const TemplateLayout without = layoutWithout(selection.boxes);
        for (int slot : selection.boxes) {
            BoxInfo &box = layout.box(slot);
            const Landing landing =
                land(without, box, boxPageRect(slot).translated(m_moveDelta), {});
            box.container = landing.container;
            box.left = landing.position.x();
            box.top = landing.position.y();
            LayoutEdits::setSectionFlags(box);
        }
        LayoutEdits::assignLevels(layout);
    } else if (selection.line != 0) {
        LineInfo &line = layout.line(selection.line);
        const QRect target = linePageRect(selection.line).translated(m_moveDelta);
        line.container = containerAt(target.topLeft(), layout);
        const QPoint position =
            target.topLeft() - layout.containerOrigin(line.container, pageArea(), pictures());
        line.left = std::max(0, position.x());
        line.top = std::max(0, position.y());
        line.lineY = line.top;
    } else if (selection.rect != 0) {
        PrintRect &rect = layout.rect(selection.rect);
        rect.left = std::max(0.0f, rect.left + float(m_moveDelta.x()));
        rect.top = std::max(0.0f, rect.top + float(m_moveDelta.y()));
        LayoutEdits::recordRectPlacement(rect);
    }
    m_document.change(layout, QStringLiteral("Move"), m_document.newMergeId());
    emit statusText(outOfBoundsText());
}

void DesignCanvas::finishResize() {
    const QRect r = dragRectToRect(m_drag);
    TemplateLayout layout = m_document.layout();
    if (m_mode == Mode::ResizeBox) {
        if (!m_dragAllowed)
            return;
        BoxInfo &box = layout.box(m_dragSlot);
        box.width = r.width();
        box.height = r.height();
        box.resized = true;
        box.resizedWidth = box.width;
        box.resizedHeight = box.height;
    } else if (m_mode == Mode::ResizeLine) {
        layout.line(m_dragSlot).width = r.width();
    } else {
        PrintRect &rect = layout.rect(m_dragSlot);
        rect.width = float(r.width());
        rect.height = float(r.height());
        LayoutEdits::recordRectPlacement(rect);
    }
    m_document.change(layout, QStringLiteral("Resize"));
    emit statusText(outOfBoundsText());
}

void DesignCanvas::finishRubberBand(Qt::KeyboardModifiers modifiers) {
    const QRect band = dragRectToRect(m_drag);
    if (band.width() < 30 && band.height() < 30)
        return;
    DesignerSelection selection;
    if (modifiers & (Qt::ShiftModifier | Qt::ControlModifier))
        selection.boxes = m_document.selection().boxes;
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        if (m_document.layout().box(slot).placed && band.intersects(boxPageRect(slot)) &&
            !selection.boxes.contains(slot))
            selection.boxes.append(slot);
    }
    m_document.setSelection(selection);
}

void DesignCanvas::mouseDoubleClickEvent(QMouseEvent *event) {
    const Hit hit = hitTest(event->position().toPoint());
    if (hit.kind == Hit::Kind::Box && m_document.layout().box(hit.slot).notes)
        emit commandWanted(QStringLiteral("mnuEditNotes"));
}

void DesignCanvas::dragEnterEvent(QDragEnterEvent *event) {
    if (event->mimeData()->hasFormat(FieldList::mimeType()))
        event->acceptProposedAction();
}

void DesignCanvas::dragMoveEvent(QDragMoveEvent *event) {
    const std::optional<NewBoxRequest> request = FieldList::requestFromMime(event->mimeData());
    if (!request)
        return;
    NewBoxRequest withFont = *request;
    withFont.fontName = m_newFontName;
    withFont.fontSize = m_newFontSize;
    const BoxInfo box = LayoutEdits::makeBox(withFont);
    const QPoint page = pagePoint(toPage(event->position()));
    const PageArea area = pageArea();
    m_dropOutline =
        QRect(area.marginLeft + snapped(page.x() - area.marginLeft, false),
              area.marginTop + snapped(page.y() - area.marginTop, false), box.width, box.height);
    m_dragAllowed = land(m_document.layout(), box, m_dropOutline, {}).allowed;
    emit statusText(m_dragAllowed ? outOfBoundsText() : cannotPlace());
    event->acceptProposedAction();
    update();
}

void DesignCanvas::dragLeaveEvent(QDragLeaveEvent *) {
    m_dropOutline = {};
    emit statusText(outOfBoundsText());
    update();
}

void DesignCanvas::dropEvent(QDropEvent *event) {
    m_dropOutline = {};
    const std::optional<NewBoxRequest> request = FieldList::requestFromMime(event->mimeData());
    if (!request)
        return;
    placeNewBox(*request, event->position().toPoint());
    event->acceptProposedAction();
    update();
}

} // namespace tavrel
