#include "shell/ui/PrinterProperties.h"

#include "base/Prompter.h"
#include "shell/AppContext.h"
#include "shell/SettingsStore.h"

namespace tavrel {

namespace {

OrientationChoice orientationOf(const AppContext &context) {
    if (!context.landscapeOverride)
        return OrientationChoice::FromTemplates;
    return *context.landscapeOverride ? OrientationChoice::Landscape : OrientationChoice::Portrait;
}

} // namespace

QString printerChoiceText(const AppContext &context) {
    const int copies = std::max(1, int(context.printer.printCopies));
    QString text =
        QStringLiteral("Printer: ") +
        (context.printer.printerDeviceName.isEmpty() ? QStringLiteral("the system's default")
                                                     : context.printer.printerDeviceName) +
        (copies == 1 ? QStringLiteral(", 1 copy") : QStringLiteral(", %1 copies").arg(copies));
    switch (orientationOf(context)) {
    case OrientationChoice::FromTemplates:
        text += QStringLiteral(", orientation as the templates are designed");
        break;
    case OrientationChoice::Portrait:
        text += QStringLiteral(", portrait");
        break;
    case OrientationChoice::Landscape:
        text += QStringLiteral(", landscape");
        break;
    }
    return text;
}

QString printedText(int pages, const AppContext &context) {
    return QStringLiteral("%1 page(s) sent to the printer. ").arg(pages) +
           printerChoiceText(context);
}

bool choosePrinterProperties(AppContext &context, Prompter &prompter, const PrinterList &printers) {
    PrinterSetup initial;
    initial.printers = printers.installed;
    initial.printer = context.printer.printerDeviceName.isEmpty()
                          ? printers.current
                          : context.printer.printerDeviceName;
    initial.copies = std::max(1, int(context.printer.printCopies));
    initial.orientation = orientationOf(context);
    const std::optional<PrinterSetup> chosen = prompter.printerSetup(initial);
    if (!chosen)
        return false;
    const int copies = std::max(1, chosen->copies);
    if (chosen->printer != context.printer.printerDeviceName ||
        copies != context.printer.printCopies)
        context.job.writePrinterChoice(chosen->printer, copies);
    context.printer.printerDeviceName = chosen->printer;
    context.printer.printCopies = copies;
    switch (chosen->orientation) {
    case OrientationChoice::FromTemplates:
        context.landscapeOverride.reset();
        break;
    case OrientationChoice::Portrait:
        context.landscapeOverride = false;
        break;
    case OrientationChoice::Landscape:
        context.landscapeOverride = true;
        break;
    }
    prompter.status(printerChoiceText(context));
    return true;
}

} // namespace tavrel
