#include "shell/ui/PreviewSession.h"

#include "base/ErrorReport.h"
#include "base/Prompter.h"
#include "preview/frmPrintpreview.h"
#include "print/PrinterOutput.h"
#include "render/PageEngine.h"
#include "shell/AppContext.h"
#include "shell/ReportExport.h"
#include "shell/ReportJob.h"
#include "shell/ui/frmMsgbox.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>

namespace tavrel {

namespace {

// Thrown from the progress callback when the user cancels; deliberately not a RuntimeError, so
// that no renderer's error trap takes it for a drawing failure.
struct LayoutCancelled {};

} // namespace

PreviewSession::PreviewSession(AppContext &context, Prompter &prompter,
                               const MenuSelection &selection)
    : m_context(context)
    , m_prompter(prompter)
    , m_selection(selection)
    , m_engine(std::make_unique<PageEngine>()) {}

PreviewSession::~PreviewSession() = default;

frmPrintpreview *PreviewSession::start(AppContext &context, Prompter &prompter,
                                       const MenuSelection &selection, const QString &caption,
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
    frmMsgbox progress(mainWindow);
    progress.setMessage(QStringLiteral("Preparing the print preview..."));
    progress.setProgress(0, 0);
    progress.show();
    if (mainWindow)
        mainWindow->setEnabled(false);
    window->setLayoutRunning(true);
    window->show();

    const int listener = m_engine->addNewPageListener([&progress](int page) {
        progress.setMessage(QStringLiteral("Laying out page %1...").arg(page + 1));
        if (!progress.report(page, 0))
            throw LayoutCancelled{};
    });
    m_job = std::make_unique<ReportJob>(m_context, m_selection, m_prompter);
    try {
        m_job->run(*m_engine, [] { QCoreApplication::processEvents(); });
    } catch (const LayoutCancelled &) {
        m_prompter.status(QStringLiteral("Print preview stopped: the pages laid out so far are "
                                         "shown."));
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("Print Preview."), error);
    }
    m_engine->removeNewPageListener(listener);
    progress.finish();
    if (mainWindow)
        mainWindow->setEnabled(true);
    window->setLayoutRunning(false);
    window->refreshDocument();
}

void PreviewSession::print() {
    try {
        printDocumentOn(*m_engine, m_context.printer.printerDeviceName,
                        m_context.printer.printCopies);
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("Print Document."), error);
    }
}

void PreviewSession::rerunHtml() {
    try {
        ReportExport::exportHtml(m_context, m_selection, m_prompter, QString());
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("HTML Export."), error);
    }
}

QString PreviewSession::rerunRtf() {
    try {
        // The window opens the file itself.
        ExportOptions options;
        options.openWhenDone = false;
        return ReportExport::exportRtf(m_context, m_selection, m_prompter, QString(), options);
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("RTF Export."), error);
        return {};
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
    // The installed user guide (<prefix>/share/doc/tavrel beside <prefix>/bin) first, then the
    // guide a development build makes in <build>/doc, then the developers' README.
    const QDir folder(QCoreApplication::applicationDirPath());
    for (const QString &candidate :
         {folder.filePath(QStringLiteral("../share/doc/tavrel/guide/index.html")),
          folder.filePath(QStringLiteral("../doc/guide/index.html")),
          folder.filePath(QStringLiteral("README.md")),
          folder.filePath(QStringLiteral("../../../README.md"))}) {
        if (QFileInfo::exists(candidate)) {
            prompter.openDocument(QFileInfo(candidate).canonicalFilePath(), QStringLiteral("Help"));
            return;
        }
    }
    prompter.message(QStringLiteral("The help file could not be found."), QString(),
                     MessageIcon::Information);
}

} // namespace tavrel
