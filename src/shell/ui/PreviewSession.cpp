#include "shell/ui/PreviewSession.h"

#include "base/ErrorReport.h"
#include "base/Prompter.h"
#include "base/ui/OutputNotice.h"
#include "base/ui/UserGuide.h"
#include "preview/frmPrintpreview.h"
#include "print/PrinterOutput.h"
#include "render/LayoutJob.h"
#include "render/PageEngine.h"
#include "shell/AppContext.h"
#include "shell/ReportExport.h"
#include "shell/ReportJob.h"
#include "shell/ui/OutputProgress.h"
#include "shell/ui/PrinterProperties.h"
#include "shell/ui/frmMsgbox.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QPointer>

namespace tavrel {

PreviewSession::PreviewSession(AppContext &context, Prompter &prompter,
                               const ReportSelection &selection)
    : m_context(context)
    , m_prompter(prompter)
    , m_selection(selection)
    , m_engine(std::make_unique<PageEngine>()) {}

PreviewSession::~PreviewSession() = default;

frmPrintpreview *PreviewSession::start(AppContext &context, Prompter &prompter,
                                       const ReportSelection &selection, const QString &caption,
                                       QWidget *mainWindow) {
    auto *session = new PreviewSession(context, prompter, selection);
    auto *window =
        new frmPrintpreview(*session->m_engine, prompter, *session, context.runMode, caption);
    // The session (and so the engine) is a child of the window: it outlives the window's own
    // destructor and goes right after it.
    session->setParent(window);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setPdfFolder(context.paths.pdfFolder);
    if (!context.paths.activeDocumentName.isEmpty())
        window->setPdfFileName(context.paths.activeDocumentName + QStringLiteral(".pdf"));
    session->layOut(window, mainWindow);
    return window;
}

void PreviewSession::layOut(frmPrintpreview *window, QWidget *mainWindow) {
    // The templates are read (and their messages shown) before anything is laid out.
    m_job = std::make_unique<ReportJob>(m_context, m_selection, m_prompter);

    // The progress box belongs to the preview, so it stays in front of it and usable while the
    // main window is disabled.
    QPointer<frmMsgbox> progress = new frmMsgbox(window);
    progress->setMessage(QStringLiteral("Preparing the print preview..."));
    progress->setProgress(0, 0);
    QPointer<QWidget> main = mainWindow;
    if (main)
        main->setEnabled(false);
    window->setLayoutRunning(true);
    window->show();
    progress->show();
    progress->raise();

    ReportJob *report = m_job.get();
    m_layout = std::make_unique<LayoutJob>([report](PageEngine &engine, const CancelToken &cancel) {
        report->layOut(engine, &cancel);
    });
    m_layout->setTarget(m_engine.get());
    m_layout->setProgressCallback([progress, window](int pages) {
        if (progress) {
            progress->setMessage(QStringLiteral("Laying out page %1...").arg(pages + 1));
            progress->setProgress(pages, 0);
        }
        window->refreshDocument();
    });
    LayoutJob *layout = m_layout.get();
    connect(progress, &frmMsgbox::stopRequestedChanged, layout, [layout] { layout->cancel(); });

    // Wait here, with the event loop running, so that the caller finds the document laid out;
    // closing the preview meanwhile takes this session (and the job, cancelled) with it.
    QPointer<PreviewSession> self = this;
    QEventLoop loop;
    connect(layout, &LayoutJob::finished, &loop, &QEventLoop::quit);
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    layout->start();
    loop.exec();

    if (main)
        main->setEnabled(true);
    if (!self)
        return;
    if (progress) {
        progress->finish();
        progress->deleteLater();
    }
    window->setLayoutRunning(false);
    window->refreshDocument();
    m_job->reportDiagnostics();
    if (layout->error()) {
        reportError(m_prompter, QStringLiteral("Print Preview."), *layout->error());
    } else if (layout->wasCancelled()) {
        m_prompter.status(QStringLiteral("Print preview stopped: the pages laid out so far are "
                                         "shown."));
    }
}

void PreviewSession::print() {
    try {
        if (printWithProgress(*m_engine, m_context.printer.printerDeviceName,
                              m_context.printer.printCopies, qobject_cast<QWidget *>(parent())))
            m_prompter.status(printedText(int(m_engine->pages().size()), m_context));
        else
            m_prompter.status(QStringLiteral("Printing cancelled."));
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("Print Document."), error);
    }
}

ExportOptions PreviewSession::exportOptions() {
    ExportOptions options;
    // The re-run is laid out off the window thread, with progress and Cancel, like the preview.
    options.layOut = [this](ReportJob &report, PageEngine &engine,
                            const ExportFragmentWriter *fragments) {
        return layOutWithProgress(report, engine, qobject_cast<QWidget *>(parent()), fragments);
    };
    return options;
}

void PreviewSession::rerunHtml() {
    try {
        ExportOptions options = exportOptions();
        std::optional<bool> opened;
        options.openResult = [&opened](bool result) { opened = result; };
        const QString first =
            ReportExport::exportHtml(m_context, m_selection, m_prompter, QString(), options);
        if (!first.isEmpty())
            confirmOutput(m_prompter, QStringLiteral("HTML pages"), first,
                          !opened   ? OpenOutcome::NotAsked
                          : *opened ? OpenOutcome::Opened
                                    : OpenOutcome::NoApplication);
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("HTML Export."), error);
    }
}

QString PreviewSession::rerunRtf() {
    try {
        // The window opens the file itself.
        ExportOptions options = exportOptions();
        options.openWhenDone = false;
        return ReportExport::exportRtf(m_context, m_selection, m_prompter, QString(), options);
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("RTF Export."), error);
        return {};
    }
}

void PreviewSession::exportSpreadsheet() {
    try {
        ExportOptions options = exportOptions();
        options.openWhenDone = false; // opened below, with the confirmation
        const QString path =
            ReportExport::saveSpreadsheet(m_context, m_selection, m_prompter, options);
        if (!path.isEmpty())
            openAndConfirmOutput(m_prompter, QStringLiteral("Spreadsheet"), path,
                                 ReportExport::spreadsheetDescription(path));
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("Spreadsheet Export."), error);
    }
}

void PreviewSession::about() {
    showAbout(m_prompter);
}

void PreviewSession::help() {
    openHelp(m_prompter);
}

void showAbout(Prompter &prompter) {
    prompter.message(QStringLiteral("Tavrel %1\n\nPrints furniture specifications: cover page, "
                                    "item listing and summary, laid out by your templates.")
                         .arg(QCoreApplication::applicationVersion()),
                     QStringLiteral("About Tavrel"), MessageIcon::Information);
}

void openHelp(Prompter &prompter) {
    UserGuide::open(prompter);
}

} // namespace tavrel
