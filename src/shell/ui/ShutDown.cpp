#include "shell/ui/ShutDown.h"

#include "shell/AppContext.h"
#include "shell/platform/ParentProgressWindow.h"

#include <QApplication>

namespace tavrel {

void ShutDown(AppContext &context) {
    context.stringTable = {};
    ParentProgressWindow::close();
    QApplication::closeAllWindows();
    // Leaves a running event loop; when none runs yet, main() returns after start-up instead.
    QCoreApplication::exit(0);
}

} // namespace tavrel
