#include "designer/DesignCanvas.h"

#include "designer/DesignerDocument.h"
#include "render/BodyRendererLayout.h"
#include "render/FontTable.h"

#include <QPaintEvent>
#include <QPainter>

#include <cmath>

namespace tavrel {

namespace {

QColor fromColorNumber(qint32 number) {
    const auto value = quint32(number);
    return QColor(int(value & 0xff), int((value >> 8) & 0xff), int((value >> 16) & 0xff));
}

Qt::PenStyle penStyle(qint16 style) {
    switch (LineStyle(style)) {
    case LineStyle::Dash:
        return Qt::DashLine;
    case LineStyle::Dot:
        return Qt::DotLine;
    case LineStyle::DashDot:
        return Qt::DashDotLine;
    case LineStyle::DashDotDot:
        return Qt::DashDotDotLine;
    case LineStyle::Solid:
        break;
    }
    return Qt::SolidLine;
}

Qt::Alignment alignmentOf(qint32 textAlign) {
    switch (textAlign) {
    case TextAlign::Right:
        return Qt::AlignRight;
    case TextAlign::Center:
        return Qt::AlignHCenter;
    case TextAlign::Justify:
        return Qt::AlignJustify;
    default:
        return Qt::AlignLeft;
    }
}

const QColor selectionColor(0, 120, 215);

} // namespace

void DesignCanvas::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(128, 128, 128));
    paintPage(painter);
    paintBands(painter);
    paintElements(painter);
    paintOutOfBounds(painter);
    paintDragFeedback(painter);
}

QImage DesignCanvas::pictureOf(const BoxInfo &box) const {
    const QString path = TemplateLayout::pictureFileOf(box);
    if (path.isEmpty() || !pictures()(path, m_document.layout().pictureSizeOf(box)))
        return {};
    auto found = m_pictureImages.find(path);
    if (found == m_pictureImages.end()) {
        // Decoded once at the file's own size; the page shows it scaled like the report does.
        found = m_pictureImages.insert(path, QImage(path));
    }
    return *found;
}

void DesignCanvas::paintOutOfBounds(QPainter &painter) const {
    // What would print past the printable area: a red hatched outline, so that it stands out
    // at any zoom; the status line names it.
    for (int element : outOfBounds()) {
        const QRect page = element > 1000 ? rectPageRect(element - 1000)
                           : element < 0  ? linePageRect(-element)
                                          : boxPageRect(element);
        const QRect r = widgetRect(page);
        painter.fillRect(r, QBrush(QColor(220, 0, 0, 110), Qt::BDiagPattern));
        painter.setPen(QPen(QColor(220, 0, 0), 2, Qt::DashLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(r.adjusted(0, 0, -1, -1));
    }
}

void DesignCanvas::paintPage(QPainter &painter) const {
    const PageArea area = pageArea();
    const QRect page = widgetRect(QRect(0, 0, area.pageWidth, area.pageHeight));
    painter.fillRect(page.translated(4, 4), QColor(70, 70, 70));
    painter.fillRect(page, Qt::white);
    const QRect printable = widgetRect(QRect(area.marginLeft, area.marginTop, area.printableWidth(),
                                             area.printableBottom() - area.marginTop));
    painter.setPen(QPen(QColor(200, 200, 200), 1, Qt::DashLine));
    painter.drawRect(printable);
    // Grid dots every eighth of an inch, darker every inch.
    const double step = GridDrawStep * scale();
    if (step >= 5) {
        for (qint32 y = area.marginTop; y <= area.printableBottom(); y += GridDrawStep) {
            for (qint32 x = area.marginLeft; x <= area.pageWidth - area.marginRight;
                 x += GridDrawStep) {
                const bool inch =
                    (x - area.marginLeft) % 1440 == 0 && (y - area.marginTop) % 1440 == 0;
                painter.setPen(inch ? QColor(150, 150, 150) : QColor(215, 215, 215));
                painter.drawPoint(toWidget(QPointF(x, y)));
            }
        }
    }
    const QRect marker = centerMarkerRect();
    painter.setPen(QPen(QColor(200, 0, 0), 1));
    painter.drawLine(marker.center().x(), marker.top(), marker.center().x(), marker.bottom());
    painter.drawLine(marker.left(), marker.center().y(), marker.right(), marker.center().y());
    painter.drawEllipse(marker.adjusted(3, 3, -3, -3));
}

void DesignCanvas::paintBands(QPainter &painter) const {
    const TemplateLayout &layout = m_document.layout();
    const PageArea area = pageArea();
    const qint32 header = bandHeight(Container::header());
    const qint32 footer = bandHeight(Container::footer());
    const QRect headerRect(area.marginLeft, area.marginTop, area.printableWidth(),
                           std::max(header, EmptyBandStrip));
    const QRect footerRect(area.marginLeft,
                           area.printableBottom() - std::max(footer, EmptyBandStrip),
                           area.printableWidth(), std::max(footer, EmptyBandStrip));
    QFont font = painter.font();
    font.setPixelSize(10);
    font.setItalic(true);
    painter.setFont(font);
    // Band names run down the grey gutter left of the sheet, where no box can hide them.
    const auto gutterLabel = [&](int top, int bottom, const QString &name) {
        painter.save();
        painter.setClipRect(QRect(0, top, PageOffset, std::max(1, bottom - top)));
        painter.translate(PageOffset - 6, top + 3);
        painter.rotate(90);
        painter.setPen(QColor(235, 235, 235));
        painter.drawText(0, 0, name);
        painter.restore();
    };
    const auto drawBand = [&](const QRect &pageRect, bool empty, const QString &name) {
        const QRect r = widgetRect(pageRect);
        painter.fillRect(r, empty ? QColor(235, 242, 250, 160) : QColor(225, 236, 250));
        painter.setPen(QPen(QColor(120, 150, 200), 1, empty ? Qt::DotLine : Qt::SolidLine));
        painter.drawRect(r);
        if (empty) {
            painter.setPen(QColor(90, 120, 170));
            painter.drawText(r.adjusted(4, 1, -4, -1), Qt::AlignLeft | Qt::AlignVCenter,
                             QStringLiteral("drop page fields here"));
        }
        gutterLabel(r.top(), r.bottom(), name);
    };
    drawBand(headerRect, header == 0, QStringLiteral("Header"));
    drawBand(footerRect, footer == 0, QStringLiteral("Footer"));
    const QPoint body = layout.containerOrigin(Container::mainPort(), area, pictures());
    gutterLabel(toWidget(body).y(), widgetRect(footerRect).top(), QStringLiteral("Body"));
    const qint32 columns = LayoutEdits::bodyColumnsRight(layout);
    if (columns > area.printableWidth()) {
        const QPoint edge = toWidget(QPointF(area.pageWidth - area.marginRight, body.y()));
        painter.setPen(QPen(Qt::red, 2));
        painter.drawLine(edge.x(), edge.y(), edge.x(), edge.y() + 40);
    }
}

void DesignCanvas::paintBox(QPainter &painter, const BoxInfo &box, bool selected,
                            bool reference) const {
    const QRect r = widgetRect(boxPageRect(box.index));
    const QImage picture = pictureOf(box);
    if (!picture.isNull()) {
        // The picture itself, as large as it prints.
        painter.fillRect(r, Qt::white);
        painter.drawImage(r, picture);
        painter.setPen(QPen(QColor(160, 120, 40), 1, Qt::DotLine));
        painter.drawRect(r.adjusted(0, 0, -1, -1));
    } else {
        painter.fillRect(r, box.changeBackcolor ? fromColorNumber(box.custBkColor)
                                                : QColor(255, 255, 240));
        painter.setPen(
            QPen(box.logo || box.imgPlaced ? QColor(160, 120, 40) : QColor(160, 160, 160), 1,
                 box.notes ? Qt::DashLine : Qt::SolidLine));
        painter.drawRect(r.adjusted(0, 0, -1, -1));
    }
    QString text = box.caption;
    if (box.logo)
        text = QStringLiteral("[Logo %1]").arg(m_document.layout().pictureSizeOf(box));
    else if (box.imgPlaced)
        text = QStringLiteral("[Image]");
    if (picture.isNull()) {
        // The text in the font the report prints it in, measured in twips and scaled to the page,
        // from the inset the report's text boxes start at.
        FontSpec spec;
        spec.name = box.fontName.isEmpty() ? QStringLiteral("Arial") : box.fontName;
        spec.size = std::max<int>(box.fontSize, 1);
        // The body's column captions print bold.
        spec.bold = box.fontBold || (box.body && box.container == Container::mainPort());
        spec.italic = box.fontItalic;
        spec.underline = box.fontUnderLine;
        const QRect page = boxPageRect(box.index);
        const double inset = box.body && !box.logo && !box.imgPlaced ? BodyLayout::CellInset : 0;
        painter.save();
        painter.setClipRect(r);
        painter.translate(QPointF(toWidget(page.topLeft())));
        painter.scale(scale(), scale());
        painter.setFont(FontTable::makeFont(spec));
        painter.setPen(fromColorNumber(box.foreColor));
        // A note wraps at the box's width as it prints, as far as the box shows it.
        const int flow = box.notes ? int(Qt::TextWordWrap) : int(Qt::TextSingleLine);
        painter.drawText(QRectF(inset, 0, std::max(1.0, page.width() - 2 * inset), page.height()),
                         int(alignmentOf(box.textAlign)) | int(Qt::AlignTop) | flow, text);
        painter.restore();
    }
    const std::optional<PairWidthFields> pair = pairWidthFields(box.caption);
    const float code = pair ? m_document.layout().other.*pair->code : 0.0f;
    if (code > 0 && code < float(box.width)) {
        // Where the code ends and the description begins.
        const int x = toWidget(QPointF(boxPageRect(box.index).left() + double(code), 0)).x();
        painter.setPen(QPen(QColor(160, 160, 160), 1, Qt::DotLine));
        painter.drawLine(x, r.top() + 1, x, r.bottom() - 1);
    }
    if (box.displayLabel) {
        // A small tab on the left edge: the field's label prints in front of its value.
        const QRect tab(r.left() - 1, r.top(), 4, r.height());
        painter.fillRect(tab, QColor(0, 150, 80));
    }
    if (!selected)
        return;
    painter.setPen(QPen(selectionColor, 2));
    painter.drawRect(r.adjusted(0, 0, -1, -1));
    if (reference || m_document.selection().boxes.size() == 1) {
        painter.fillRect(handleRect(r), selectionColor);
    } else {
        painter.setPen(QPen(selectionColor, 1));
        painter.fillRect(handleRect(r), Qt::white);
        painter.drawRect(handleRect(r));
    }
}

void DesignCanvas::paintElements(QPainter &painter) const {
    const TemplateLayout &layout = m_document.layout();
    const DesignerSelection &selection = m_document.selection();
    for (int slot = 1; slot <= TemplateLayout::RectCapacity; ++slot) {
        const PrintRect &rect = layout.rect(slot);
        if (!rect.rectVisible)
            continue;
        const QRect r = widgetRect(rectPageRect(slot));
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(fromColorNumber(rect.borderColor), 1));
        painter.drawRect(r);
        if (selection.rect == slot) {
            painter.setPen(QPen(selectionColor, 1, Qt::DashLine));
            painter.drawRect(r.adjusted(-2, -2, 2, 2));
            painter.fillRect(handleRect(r), selectionColor);
        }
    }
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &box = layout.box(slot);
        if (box.placed)
            paintBox(painter, box, selection.boxes.contains(slot),
                     !selection.boxes.isEmpty() && selection.boxes.first() == slot);
    }
    for (int slot = 1; slot <= TemplateLayout::LineCapacity; ++slot) {
        const LineInfo &line = layout.line(slot);
        if (!line.placed)
            continue;
        const QRect r = widgetRect(linePageRect(slot));
        QPen pen(fromColorNumber(line.backColor), std::max(1.0, line.height * scale()),
                 penStyle(line.boderStyle), Qt::FlatCap);
        painter.setPen(pen);
        painter.drawLine(r.left(), r.center().y(), r.right(), r.center().y());
        if (selection.line == slot) {
            painter.setPen(QPen(selectionColor, 1, Qt::DashLine));
            painter.drawRect(r.adjusted(-1, -3, 1, 3));
            painter.fillRect(handleRect(r), selectionColor);
        }
    }
}

void DesignCanvas::paintDragFeedback(QPainter &painter) const {
    const QColor outline = m_dragAllowed ? QColor(0, 0, 0) : QColor(220, 0, 0);
    painter.setBrush(Qt::NoBrush);
    if (!m_dropOutline.isNull()) {
        painter.setPen(QPen(outline, 2, Qt::DashLine));
        painter.drawRect(widgetRect(m_dropOutline));
    }
    switch (m_mode) {
    case Mode::MoveBoxes:
        painter.setPen(QPen(outline, 2));
        for (int slot : m_document.selection().boxes)
            painter.drawRect(widgetRect(boxPageRect(slot).translated(m_moveDelta)));
        break;
    case Mode::MoveLine:
    case Mode::MoveRect:
    case Mode::ResizeBox:
    case Mode::ResizeLine:
    case Mode::ResizeRect: {
        const ControlGeometry g = m_drag.SetCtrlToRect();
        painter.setPen(QPen(outline, 2));
        painter.drawRect(widgetRect(QRect(g.left, g.top, g.width, std::max(g.height, 1))));
        break;
    }
    case Mode::RubberBand: {
        const ControlGeometry g = m_drag.SetCtrlToRect();
        painter.setPen(QPen(selectionColor, 1, Qt::DashLine));
        painter.setBrush(QColor(0, 120, 215, 40));
        painter.drawRect(widgetRect(QRect(g.left, g.top, g.width, g.height)));
        painter.setBrush(Qt::NoBrush);
        break;
    }
    case Mode::None:
        break;
    }
}

} // namespace tavrel
