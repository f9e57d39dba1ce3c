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

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void placeRulers();

    DesignCanvas *m_canvas;
    QWidget *m_top;
    QWidget *m_left;
    QWidget *m_corner;
};

} // namespace tavrel
