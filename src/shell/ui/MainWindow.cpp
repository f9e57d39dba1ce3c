#include "shell/ui/MainWindow.h"

#include "shell/ui/ApplicationReportActions.h"
#include "shell/ui/frmMenu.h"

#include <QCoreApplication>

namespace tavrel {

void showMainWindow(AppContext &context, Prompter &prompter) {
    // The window and its actions live until the program ends.
    auto *actions = new ApplicationReportActions(context, prompter);
    auto *window = new frmMenu(context, prompter, *actions);
    actions->setWindow(window);
    window->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(window, &QObject::destroyed, [actions] { delete actions; });
    window->show();
}

} // namespace tavrel
