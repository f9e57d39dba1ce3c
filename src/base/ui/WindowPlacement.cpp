#include "base/ui/WindowPlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace tavrel {

QRect fitIntoScreen(const QRect &wanted, const QMargins &frame, const QRect &available) {
    const QRect inside = available.marginsRemoved(frame);
    if (inside.isEmpty())
        return wanted;
    QRect placed = wanted;
    placed.setWidth(std::min(wanted.width(), inside.width()));
    placed.setHeight(std::min(wanted.height(), inside.height()));
    // A geometry remembered on another (or a larger) screen comes in from the edges it crosses.
    placed.moveLeft(std::clamp(placed.left(), inside.left(), inside.right() - placed.width() + 1));
    placed.moveTop(std::clamp(placed.top(), inside.top(), inside.bottom() - placed.height() + 1));
    return placed;
}

void fitWindowToScreen(QWidget *window) {
    if (!window || window->isMaximized() || window->isFullScreen())
        return;
    QScreen *screen = window->screen();
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    QMargins frame(window->geometry().left() - window->frameGeometry().left(),
                   window->geometry().top() - window->frameGeometry().top(),
                   window->frameGeometry().right() - window->geometry().right(),
                   window->frameGeometry().bottom() - window->geometry().bottom());
    // Room for a typical frame (title bar on top) until the window manager has put its own.
    if (frame.isNull())
        frame = QMargins(8, 40, 8, 8);
    const QRect placed = fitIntoScreen(window->geometry(), frame, screen->availableGeometry());
    if (placed != window->geometry())
        window->setGeometry(placed);
}

} // namespace tavrel
