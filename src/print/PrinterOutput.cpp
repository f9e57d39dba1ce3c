#include "print/PrinterOutput.h"

#include "base/RuntimeError.h"
#include "render/CancelToken.h"
#include "render/PageEngine.h"
#include "render/PageLayouts.h"
#include "render/PageReplay.h"

#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>

namespace tavrel {

bool printPages(const PageEngine &engine, QPrinter &printer, const PrintProgress &hooks) {
    const int count = int(engine.pages().size());
    if (count == 0)
        return true;
    printer.setFullPage(true);
    printer.setPageLayout(pageLayoutOf(engine.page(1)));
    QPainter painter;
    if (!painter.begin(&printer))
        throw RuntimeError(ErrorNumber::DeviceIoError);
    for (int number = 1; number <= count; ++number) {
        if (hooks.cancel && hooks.cancel->isCancelled()) {
            printer.abort();
            painter.end();
            return false;
        }
        if (number > 1) {
            const QPageLayout layout = pageLayoutOf(engine.page(number));
            if (!layout.isEquivalentTo(printer.pageLayout()))
                printer.setPageLayout(layout);
            if (!printer.newPage())
                throw RuntimeError(ErrorNumber::DeviceIoError);
        }
        painter.save();
        // The printer's resolution varies; the display list is in twips.
        const double scale = printer.resolution() / 1440.0;
        painter.scale(scale, scale);
        paintPage(painter, engine, number);
        painter.restore();
        if (hooks.progress)
            hooks.progress(number);
    }
    if (!painter.end())
        throw RuntimeError(ErrorNumber::DeviceIoError);
    return true;
}

bool printDocumentOn(const PageEngine &engine, const QString &printerName, int copies,
                     const PrintProgress &hooks) {
    QPrinterInfo info = QPrinterInfo::printerInfo(printerName);
    if (info.isNull())
        info = QPrinterInfo::defaultPrinter();
    if (info.isNull())
        throw RuntimeError(ErrorNumber::DeviceIoError, QStringLiteral("No printer is installed"));
    QPrinter printer(info, QPrinter::HighResolution);
    printer.setDocName(engine.DocName());
    printer.setCopyCount(qMax(1, copies));
    return printPages(engine, printer, hooks);
}

} // namespace tavrel
