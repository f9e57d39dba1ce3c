#include "templates/DragRect.h"

#include "base/Conversions.h"

#include <utility>

namespace tavrel {

namespace {

qint32 toLong(double value) {
    return Conversions::toInt32(value);
}

} // namespace

void DragRect::SetRectToCtrl(const ControlGeometry &control) {
    Left = control.left;
    Top = control.top;
    Right = toLong(double(control.left) + double(control.width));
    Bottom = toLong(double(control.top) + double(control.height));
}

ControlGeometry DragRect::SetCtrlToRect() const {
    return {Left, Top, toLong(double(Right) - double(Left)), toLong(double(Bottom) - double(Top))};
}

void DragRect::TwipsToScreen(const ScreenMapping &mapping) {
    Left = toLong(mapping.originX + Left / mapping.twipsPerPixelX);
    Right = toLong(mapping.originX + Right / mapping.twipsPerPixelX);
    Top = toLong(mapping.originY + Top / mapping.twipsPerPixelY);
    Bottom = toLong(mapping.originY + Bottom / mapping.twipsPerPixelY);
}

void DragRect::ScreenToTwips(const ScreenMapping &mapping) {
    Left = toLong((double(Left) - mapping.originX) * mapping.twipsPerPixelX);
    Right = toLong((double(Right) - mapping.originX) * mapping.twipsPerPixelX);
    Top = toLong((double(Top) - mapping.originY) * mapping.twipsPerPixelY);
    Bottom = toLong((double(Bottom) - mapping.originY) * mapping.twipsPerPixelY);
}

void DragRect::NormalizeRect() {
    if (Left > Right)
        std::swap(Left, Right);
    if (Top > Bottom)
        std::swap(Top, Bottom);
}

bool DragRect::PtInRect(float x, float y) const {
    return Left <= x && x < Right && Top <= y && y < Bottom;
}

} // namespace tavrel
