#include "render/PageReplay.h"

#include "render/PageEngine.h"

#include <QPainter>

namespace tavrel {

namespace {

QColor toColor(ColorNumber color) {
    return QColor(int(color & 0xFF), int((color >> 8) & 0xFF), int((color >> 16) & 0xFF));
}

Qt::PenStyle toPenStyle(int style) {
    switch (style) {
    case PenStyles::Dash:
        return Qt::DashLine;
    case PenStyles::Dot:
        return Qt::DotLine;
    case PenStyles::DashDot:
        return Qt::DashDotLine;
    case PenStyles::DashDotDot:
        return Qt::DashDotDotLine;
    case PenStyles::Transparent:
        return Qt::NoPen;
    default:
        return Qt::SolidLine;
    }
}

Qt::BrushStyle toBrushStyle(int style) {
    switch (style) {
    case BrushStyles::Transparent:
        return Qt::NoBrush;
    case BrushStyles::Horizontal:
        return Qt::HorPattern;
    case BrushStyles::Vertical:
        return Qt::VerPattern;
    case BrushStyles::ForwardDiagonal:
        return Qt::FDiagPattern;
    case BrushStyles::BackwardDiagonal:
        return Qt::BDiagPattern;
    case BrushStyles::Cross:
        return Qt::CrossPattern;
    case BrushStyles::DiagonalCross:
        return Qt::DiagCrossPattern;
    default:
        return Qt::SolidPattern;
    }
}

// A width-0 pen is the device's thinnest line. Dashed and dotted lines get 1/96 inch instead,
// so that their dashes look alike on a 96-dpi image and on a 1440-dpi PDF (and PDF readers
// differ on dashed hairlines).
QPen makePen(ColorNumber color, int style, double width) {
    constexpr double ThinDashedWidth = 15;
    QPen pen(toColor(color));
    const Qt::PenStyle qtStyle = toPenStyle(style);
    pen.setStyle(qtStyle);
    pen.setWidthF(width == 0 && qtStyle != Qt::SolidLine && qtStyle != Qt::NoPen ? ThinDashedWidth
                                                                                 : width);
    return pen;
}

// Replays the items of one page, setting fonts and pens only when they change: pages hold
// thousands of items in a handful of styles.
class Replayer {
public:
    Replayer(QPainter &painter, const PageEngine &engine)
        : m_painter(painter)
        , m_engine(engine) {}

    void operator()(const TextItem &item) {
        if (item.background >= 0) {
            const QRectF box(item.x, item.y, item.width, item.height);
            m_painter.fillRect(box, toColor(ColorNumber(item.background)));
        }
        if (item.lines.empty())
            return;
        const FontEntry &font = m_engine.fonts().at(item.font);
        if (item.font != m_font) {
            m_painter.setFont(font.font);
            m_font = item.font;
        }
        if (m_penState != PenState::Text || m_penColor != item.color) {
            m_painter.setPen(toColor(item.color));
            m_penState = PenState::Text;
            m_penColor = item.color;
        }
        double baseline = item.textTop + font.ascent;
        const bool whole = item.lines.size() == 1 && item.lines[0].start == 0 &&
                           item.lines[0].length == item.text.size();
        for (const TextLine &line : item.lines) {
            if (line.length > 0) {
                const double x = item.x + horizontalOffset(item.align, item.width, line.width);
                m_painter.drawText(QPointF(x, baseline),
                                   whole ? item.text : item.text.mid(line.start, line.length));
            }
            baseline += font.lineSpacing;
        }
    }

    void operator()(const LineItem &item) {
        if (item.style == PenStyles::Transparent)
            return;
        const QPen pen = makePen(item.color, item.style, item.penWidth);
        if (m_penState != PenState::Line || pen != m_pen) {
            m_painter.setPen(pen);
            m_pen = pen;
            m_penState = PenState::Line;
        }
        m_painter.drawLine(QPointF(item.x1, item.y1), QPointF(item.x2, item.y2));
    }

    void operator()(const RectItem &item) {
        const QRectF rect =
            QRectF(QPointF(item.left, item.top), QPointF(item.right, item.bottom)).normalized();
        m_painter.save();
        m_painter.setPen(makePen(item.penColor, item.penStyle, item.penWidth));
        m_painter.setBrush(QBrush(toColor(item.brushColor), toBrushStyle(item.brushStyle)));
        m_painter.drawRect(rect);
        m_painter.restore();
        m_penState = PenState::Unknown;
    }

    void operator()(const PictureItem &item) {
        // Decoded at the size it prints, not at the size of the file.
        const QImage image = m_engine.pictures().image(item.path, QSizeF(item.width, item.height));
        if (image.isNull())
            return;
        m_painter.drawImage(QRectF(item.x, item.y, item.width, item.height), image);
    }

private:
    QPainter &m_painter;
    const PageEngine &m_engine;
    int m_font = -1;
    enum class PenState { Unknown, Text, Line };
    PenState m_penState = PenState::Unknown;
    QPen m_pen;                 // the painter's pen in the Line state
    ColorNumber m_penColor = 0; // the painter's text colour in the Text state
};

} // namespace

void paintPage(QPainter &painter, const PageEngine &engine, int pageNumber) {
    const Page &page = engine.page(pageNumber);
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                           QPainter::SmoothPixmapTransform);
    Replayer replayer(painter, engine);
    for (const PageItem &item : page.items)
        std::visit(replayer, item);
    painter.restore();
}

} // namespace tavrel
