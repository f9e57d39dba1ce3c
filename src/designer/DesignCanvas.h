#pragma once

#include "designer/LayoutEdits.h"
#include "render/PictureCache.h"
#include "templates/DragRect.h"
#include "templates/TemplateLayout.h"

#include <QHash>
#include <QImage>
#include <QWidget>

#include <optional>

namespace tavrel {

class DesignerDocument;

// The design page: a Letter sheet at the template's orientation with a grid,
// the header band, the body and the footer band laid out exactly as the renderers print them,
// and the boxes, lines and rectangles on it. Boxes are selected by click, shift- or ctrl-click
// and rubber band, moved and resized with the mouse or the arrow keys, and snap to the grid and
// to other boxes' edges unless Alt is held. Every change goes to the document's undo stack.
class DesignCanvas : public QWidget {
    Q_OBJECT

public:
    static constexpr int PageOffset = 18;         // grey border around the sheet
    static constexpr qint32 SnapStep = 60;        // twips; the grid boxes snap to (1/24 inch)
    static constexpr qint32 GridDrawStep = 180;   // twips between grid dots (1/8 inch)
    static constexpr qint32 EmptyBandStrip = 360; // drop strip of a band that holds nothing
    static constexpr qint32 MinimumSide = 120;
    static constexpr qint32 MinimumLineThickness = 15;

    DesignCanvas(DesignerDocument &document, QWidget *parent = nullptr);

    void setMargins(qint32 left, qint32 top, qint32 right, qint32 bottom);
    void setZoom(double zoom);
    double zoom() const { return m_zoom; }
    // Pixels per twip at the current zoom.
    double scale() const;
    void setNewBoxFont(const QString &name, qint16 size);

    PageArea pageArea() const;
    QPoint toWidget(QPointF pageTwips) const;
    QPointF toPage(QPointF widgetPoint) const;
    // Page twips of the elements.
    QRect boxPageRect(int slot) const;
    QRect linePageRect(int slot) const;
    QRect rectPageRect(int slot) const;
    QRect widgetRect(const QRect &pageRect) const;
    QRect centerMarkerRect() const;
    // Picture sizes as the report prints them (logo at `LogoSize`, images at `ImageSize`).
    PictureExtent pictures() const;
    // Header and footer band heights as the renderers use them.
    qint32 bandHeight(const QString &container) const;
    // The placed elements whose printed rectangle leaves the printable area, in page order of
    // their slots: boxes as their slots, lines as -slot, rectangles as 1000 + slot.
    QList<int> outOfBounds() const;
    // The status text for the elements that print outside the printable area, empty when none.
    QString outOfBoundsText() const;
    QString toolTipAt(QPoint widgetPoint) const;

    // Places a new box with its top-left corner at a widget point; returns the slot, or
    // NoFreeBoxSlot when nothing could be placed (no free slot or not allowed there).
    int placeNewBox(const NewBoxRequest &request, QPoint widgetPoint);
    // Places a new box at the first spot of the body (or band, for band-only fields) where it
    // fits, as a double-click in the field list does.
    int placeNewBoxSomewhere(const NewBoxRequest &request);
    // Moves (or with resize, sizes) the selection by whole twips as the arrow keys do.
    void nudge(qint32 dx, qint32 dy, bool resize);

    QSize sizeHint() const override;

signals:
    void statusText(const QString &text);
    // "box", "line", "rect" or "page" under a right click.
    void contextMenuWanted(const QString &element, QPoint globalPos);
    // A window command the canvas asks for (Delete key, double-click on a note).
    void commandWanted(const QString &command);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    bool event(QEvent *event) override;

private:
    enum class Mode {
        None,
        MoveBoxes,
        ResizeBox,
        MoveLine,
        ResizeLine,
        MoveRect,
        ResizeRect,
        RubberBand
    };
    struct Hit {
        enum class Kind { None, Box, Line, Rect, Handle } kind = Kind::None;
        int slot = 0;
    };
    // Where a dragged box would land.
    struct Landing {
        QString container;
        QPoint position; // twips in the container
        bool allowed = false;
    };

    void paintPage(QPainter &painter) const;
    void paintBands(QPainter &painter) const;
    void paintElements(QPainter &painter) const;
    void paintBox(QPainter &painter, const BoxInfo &box, bool selected, bool reference) const;
    void paintDragFeedback(QPainter &painter) const;
    void paintOutOfBounds(QPainter &painter) const;
    // The picture of a box as it prints, or a null image (no file, not a picture).
    QImage pictureOf(const BoxInfo &box) const;

    Hit hitTest(QPoint widgetPoint) const;
    QRect handleRect(const QRect &widgetRect) const;
    // The container a page point falls in when boxes are dropped, with bands measured without
    // the boxes being moved.
    QString containerAt(QPoint pagePoint, const TemplateLayout &layout) const;
    Landing land(const TemplateLayout &layout, const BoxInfo &box, const QRect &pageRect,
                 const QList<int> &ignored) const;
    bool allowedAt(const TemplateLayout &layout, const BoxInfo &box, const QString &container,
                   const QRect &rectInContainer, const QList<int> &ignored) const;
    QPoint snapMove(QPoint delta, const QRect &anchor, const QList<int> &moving, bool freely) const;
    qint32 snapped(qint32 value, bool freely) const;
    void finishMove(bool commit);
    void finishResize();
    void finishRubberBand(Qt::KeyboardModifiers modifiers);
    void updateDropFeedback(const QRect &pageRect, const QList<int> &moving);
    TemplateLayout layoutWithout(const QList<int> &picked) const;
    // A box for a request in the font of new boxes; none, with the status text, when every
    // slot is taken.
    std::optional<BoxInfo> newBox(const NewBoxRequest &request);

    DesignerDocument &m_document;
    qint32 m_margins[4] = {0, 0, 0, 0};
    double m_zoom = 1.0;
    QString m_newFontName = QStringLiteral("Arial");
    qint16 m_newFontSize = 8;

    Mode m_mode = Mode::None;
    DragRect m_drag;      // page twips of the element being dragged or the rubber band
    QPoint m_pressPage;   // page twips where the mouse went down
    QPoint m_pressOffset; // cursor offset from the dragged rectangle's top-left corner
    QRect m_anchorStart;  // page rect of the grabbed element when the drag started
    QPoint m_moveDelta;   // current snapped delta of a move
    int m_dragSlot = 0;
    bool m_dragAllowed = true;
    QRect m_dropOutline; // page twips of a caption being dragged in from the field list
    mutable PictureCache m_pictureSizes;
    mutable QHash<QString, QImage> m_pictureImages; // by path, as read from the file
    QString m_boundsText;                           // the out-of-bounds warning last shown
    int m_nudgeMergeId = 0;                         // a run of arrow keys is one undo step
};

} // namespace tavrel
