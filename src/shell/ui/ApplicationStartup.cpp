#include "shell/ui/ApplicationStartup.h"

#include "print/UnattendedPrint.h"
#include "shell/DefaultTemplates.h"
#include "shell/Startup.h"
#include "shell/platform/FileTypeRegistration.h"
#include "shell/ui/MainWindow.h"
#include "shell/ui/ShutDown.h"

#include <QApplication>

namespace tavrel {

bool startApplication(AppContext &context, const QString &jobFile, Prompter &prompter) {
    context.stringTable = {};
    if (!Startup::resolvePaths(
            context, jobFile,
            DefaultTemplates::templateRoot(QCoreApplication::applicationDirPath()), prompter)) {
        ShutDown(context);
        return false;
    }
    FileTypeRegistration::registerAll();
    Startup::readUserPreferences(context);
    // Let the parent's window and ours paint once before the long read.
    QCoreApplication::processEvents();
    Startup::readSpecification(context, prompter);
    Startup::readOrderFile(context, prompter);
    Startup::readPrinterSettings(context, PrinterList::fromSystem(), prompter);
    Startup::computePageArea(context);
    Startup::readFieldLengths(context);

    switch (Startup::actionForRunMode(context.runMode)) {
    case Startup::RunModeAction::ShowMainWindow:
        showMainWindow(context, prompter);
        return true;
    case Startup::RunModeAction::PrintUnattended:
        printUnattended(context, prompter);
        // Unattended printing ends by closing the parent's window like any other end.
        ShutDown(context);
        return false;
    case Startup::RunModeAction::End:
        break;
    }
    return false;
}

} // namespace tavrel
