#pragma once

#include <QMargins>
#include <QRect>

class QWidget;

namespace tavrel {

// Where a window of the wanted client geometry goes so that all of it, frame included, lies on
// the available part of a screen: no larger than that area, and moved in from any edge it
// crosses. `frame` is the width of the window's frame on each side (title bar on top).
QRect fitIntoScreen(const QRect &wanted, const QMargins &frame, const QRect &available);

// Fits a top-level window onto the available area of its screen (or, for a window not yet on
// one, of the screen it will open on). A window whose frame is not yet known is given room for
// a typical one.
void fitWindowToScreen(QWidget *window);

} // namespace tavrel
