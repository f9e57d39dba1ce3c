#pragma once

#include <QScrollArea>

namespace tavrel {

class DesignCanvas;

// The scroll area around the design page with rulers in inches along its top and left edges.
// The rulers sit outside the scrolled view, so they stay in place while their ticks follow the
// page as it scrolls or changes size.
class RulerScrollArea : public QScrollArea {
    Q_OBJECT

public:
    static constexpr int RulerSize = 22;

    RulerScrollArea(DesignCanvas *canvas, QWidget *parent = nullptr);

    QWidget *horizontalRuler() const { return m_top; }
    QWidget *verticalRuler() const { return m_left; }

    // Zooms so that the page point under `viewportPoint` stays under it.
    void zoomAround(double zoom, QPointF viewportPoint);
    // Zooms keeping the page point at the middle of the view where it is.
    void zoomKeepingCentre(double zoom);
    // The zooms at which the whole sheet, or its width, fills the view.
    double fitPageZoom() const;
    double fitWidthZoom() const;
    void zoomToFitPage();
    void zoomToFitWidth();

signals:
    void zoomChanged(double zoom);

protected:
    void resizeEvent(QResizeEvent *event) override;
    // Ctrl+wheel zooms around the mouse; the wheel alone scrolls.
    void wheelEvent(QWheelEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void placeRulers();
    void zoomByWheel(int delta, QPointF viewportPoint);

    DesignCanvas *m_canvas;
    QWidget *m_top;
    QWidget *m_left;
    QWidget *m_corner;
};

} // namespace tavrel
