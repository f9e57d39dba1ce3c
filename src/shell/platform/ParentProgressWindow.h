#pragma once

#include <QString>

namespace tavrel {

// The parent application shows a window while it waits for Tavrel; closing it tells the parent
// that Tavrel is done.
namespace ParentProgressWindow {

inline const QString &title() {
    static const QString text = QStringLiteral("Tavrel In Progress");
    return text;
}

// Finds the top-level window with that title on the X server named by DISPLAY, shows it and
// posts it a close request. Returns whether a window was found; without an X server, false.
bool close(const QString &windowTitle = title());

// Whether a top-level window with that title exists (for tests and diagnostics).
bool exists(const QString &windowTitle = title());

} // namespace ParentProgressWindow

} // namespace tavrel
