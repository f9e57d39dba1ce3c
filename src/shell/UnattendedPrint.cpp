#include "shell/UnattendedPrint.h"

#include "base/ErrorReport.h"
#include "render/PageEngine.h"
#include "render/PrinterOutput.h"
#include "shell/AppContext.h"
#include "shell/ReportJob.h"
#include "templates/PrintSelection.h"

namespace tavrel {

bool printUnattended(AppContext &context, Prompter &prompter) {
    if (!PrintSelection::check(context.paths.jobFile, context.paths.templateFolder, prompter))
        return false;
    try {
        ReportJob report(context, ReportJob::selectionFromJobFile(context), prompter);
        PageEngine engine;
        report.run(engine);
        printDocumentOn(engine, context.printer.printerDeviceName, context.printer.printCopies);
        return true;
    } catch (const RuntimeError &error) {
        reportError(prompter, QStringLiteral("Print Document."), error);
        return false;
    }
}

} // namespace tavrel
