#include "shell/ui/OutputProgress.h"

#include "print/PrinterOutput.h"
#include "render/CancelToken.h"
#include "render/LayoutJob.h"
#include "render/OffThread.h"
#include "render/PageEngine.h"
#include "shell/ReportJob.h"
#include "shell/ui/frmMsgbox.h"

#include <atomic>

namespace tavrel {

namespace {

// frmMsgbox over parent for one piece of work; its Cancel raises the token.
class ProgressBox {
public:
    ProgressBox(QWidget *parent, const QString &message)
        : m_box(parent) {
        m_box.setWindowModality(parent ? Qt::WindowModal : Qt::ApplicationModal);
        m_box.setMessage(message);
        m_box.setProgress(0, 0);
        QObject::connect(&m_box, &frmMsgbox::stopRequestedChanged, &m_box,
                         [this] { m_cancel.cancel(); });
        m_box.show();
        m_box.raise();
    }
    ~ProgressBox() { m_box.finish(); }
    ProgressBox(const ProgressBox &) = delete;
    ProgressBox &operator=(const ProgressBox &) = delete;

    frmMsgbox &box() { return m_box; }
    const CancelToken &cancel() const { return m_cancel; }

private:
    frmMsgbox m_box;
    CancelToken m_cancel;
};

// Pages done, written by the worker and shown by the window thread.
void showPages(frmMsgbox &box, const QString &text, int done, int total) {
    box.setMessage(text.arg(done).arg(total));
    box.setProgress(done, total);
}

} // namespace

bool layOutWithProgress(ReportJob &report, PageEngine &engine, QWidget *parent,
                        const ExportFragmentWriter *fragments) {
    ProgressBox progress(parent, QStringLiteral("Laying out the report..."));
    LayoutJob layout([&report, fragments](PageEngine &worker, const CancelToken &cancel) {
        report.layOut(worker, &cancel, fragments);
    });
    QObject::connect(&progress.box(), &frmMsgbox::stopRequestedChanged, &layout,
                     [&layout] { layout.cancel(); });
    layout.setTarget(&engine);
    layout.setProgressCallback([&progress](int pages) {
        progress.box().setMessage(QStringLiteral("Laying out page %1...").arg(pages + 1));
    });
    layout.start();
    layout.waitForFinished();
    report.reportDiagnostics();
    if (layout.error())
        throw *layout.error();
    return !layout.wasCancelled();
}

PdfExportResult writePdfWithProgress(const PageEngine &engine, const QString &path,
                                     QWidget *parent) {
    ProgressBox progress(parent, QStringLiteral("Writing the PDF file..."));
    const int pages = int(engine.pages().size());
    std::atomic<int> written{0};
    PdfExportResult result = PdfExportResult::Written;
    runOffThread(
        [&] {
            result = exportPdfFile(engine, path, &progress.cancel(), [&written](int page) {
                written.store(page, std::memory_order_relaxed);
            });
        },
        [&] {
            showPages(progress.box(), QStringLiteral("Writing page %1 of %2 to the PDF file..."),
                      written.load(std::memory_order_relaxed), pages);
        });
    return result;
}

bool printWithProgress(const PageEngine &engine, const QString &printerName, int copies,
                       QWidget *parent) {
    ProgressBox progress(parent, QStringLiteral("Printing..."));
    const int pages = int(engine.pages().size());
    std::atomic<int> sent{0};
    bool printed = false;
    PrintProgress hooks;
    hooks.cancel = &progress.cancel();
    hooks.progress = [&sent](int page) { sent.store(page, std::memory_order_relaxed); };
    runOffThread([&] { printed = printDocumentOn(engine, printerName, copies, hooks); },
                 [&] {
                     showPages(progress.box(), QStringLiteral("Printing page %1 of %2..."),
                               sent.load(std::memory_order_relaxed), pages);
                 });
    return printed;
}

} // namespace tavrel
