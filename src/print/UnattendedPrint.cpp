#include "print/UnattendedPrint.h"

#include "base/ErrorReport.h"
#include "print/PrinterOutput.h"
#include "render/PageEngine.h"
#include "shell/AppContext.h"
#include "shell/PrintCheck.h"
#include "shell/ReportJob.h"

namespace tavrel {

bool printUnattended(AppContext &context, Prompter &prompter) {
    ReportSelection selection;
    if (!checkPrintState(context.job, context.paths.templateFolder, prompter, &selection))
        return false;
    try {
        ReportJob report(context, ReportJob::resolvedSelection(context, selection), prompter);
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
