#pragma once

#include <QtGlobal>

namespace tavrel {

// A control's geometry in twips within its container.
struct ControlGeometry {
    qint32 left = 0;
    qint32 top = 0;
    qint32 width = 0;
    qint32 height = 0;

    bool operator==(const ControlGeometry &) const = default;
};

// How a container's twips map to screen pixels: the screen position of the container's
// top-left corner and the twips one pixel spans on each axis (15 at 96 dpi).
struct ScreenMapping {
    qint32 originX = 0;
    qint32 originY = 0;
    double twipsPerPixelX = 15.0;
    double twipsPerPixelY = 15.0;
};

// The rubber-band rectangle of a move or resize in the designer (`cDragRect`). Edges are twips
// in the control's container, or screen pixels between TwipsToScreen and ScreenToTwips.
// Conversions that leave the 32-bit range throw RuntimeError 6 (overflow).
class DragRect {
public:
    qint32 Left = 0;
    qint32 Top = 0;
    qint32 Right = 0;
    qint32 Bottom = 0;

    qint64 Width() const { return qint64(Right) - Left; }
    qint64 Height() const { return qint64(Bottom) - Top; }

    void SetRectToCtrl(const ControlGeometry &control);
    ControlGeometry SetCtrlToRect() const;
    void TwipsToScreen(const ScreenMapping &mapping);
    void ScreenToTwips(const ScreenMapping &mapping);
    void NormalizeRect();
    // Left and top edges are inside, right and bottom edges outside.
    bool PtInRect(float x, float y) const;

    bool operator==(const DragRect &) const = default;
};

} // namespace tavrel
