#include "shell/ui/ApplicationReportActions.h"

#include "base/ErrorReport.h"
#include "base/IniFile.h"
#include "base/ui/OutputNotice.h"
#include "designer/frmCustomLayout.h"
#include "print/PrinterOutput.h"
#include "render/PageEngine.h"
#include "shell/AppContext.h"
#include "shell/ReportJob.h"
#include "shell/SettingsStore.h"
#include "shell/ui/DesignerSession.h"
#include "shell/ui/OutputProgress.h"
#include "shell/ui/PreviewSession.h"
#include "shell/ui/PrinterProperties.h"

#include <QApplication>
#include <QFile>

namespace tavrel {

ApplicationReportActions::ApplicationReportActions(AppContext &context, Prompter &prompter)
    : m_context(context)
    , m_prompter(prompter) {}

ApplicationReportActions::~ApplicationReportActions() = default;

void ApplicationReportActions::preview(const ReportSelection &selection, const QString &caption) {
    PreviewSession::start(m_context, m_prompter, selection, caption, m_window);
}

void ApplicationReportActions::print(const ReportSelection &selection) {
    try {
        ReportJob report(m_context, selection, m_prompter);
        PageEngine engine;
        if (!layOutWithProgress(report, engine, m_window))
            return;
        if (!printWithProgress(engine, m_context.printer.printerDeviceName,
                               m_context.printer.printCopies, m_window)) {
            m_prompter.status(QStringLiteral("Printing cancelled."));
            return;
        }
        m_prompter.status(printedText(int(engine.pages().size()), m_context));
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("Print Document."), error);
    }
}

void ApplicationReportActions::exportPdf(const ReportSelection &selection, const QString &pdfPath) {
    const auto inUse = [&] {
        m_prompter.status(QString());
        m_prompter.message(QStringLiteral("The file - \"") + pdfPath +
                               QStringLiteral("\" is in using. "),
                           QString(), MessageIcon::Exclamation);
    };
    // An existing file is replaced only by a complete new one: Cancel leaves it as it was.
    if (!pdfPathReplaceable(pdfPath)) {
        inUse();
        return;
    }
    try {
        ReportJob report(m_context, selection, m_prompter);
        PageEngine engine;
        if (!layOutWithProgress(report, engine, m_window) ||
            writePdfWithProgress(engine, pdfPath, m_window) == PdfExportResult::Cancelled) {
            m_prompter.status(QString());
            return;
        }
    } catch (const RuntimeError &error) {
        m_prompter.status(QString());
        reportError(m_prompter, QStringLiteral("Create PDF."), error);
        return;
    }
    if (openAndConfirmOutput(m_prompter, QStringLiteral("PDF file"), pdfPath,
                             QStringLiteral("PDF")) == OpenOutcome::NoApplication) {
        m_prompter.message(QStringLiteral("To view PDF file, You need to install Acrobat Reader.\n"
                                          "A PDF reader such as Evince or Okular can be installed "
                                          "from your distribution's software centre."),
                           QString(), MessageIcon::Exclamation);
    }
}

void ApplicationReportActions::openDesigner(int row, const QString &templatePath) {
    Q_UNUSED(row); // the path's extension names the kind
    frmCustomLayout *window = DesignerSession::open(m_context, m_prompter, templatePath);
    DesignerSession *session = DesignerSession::of(window);
    if (!session || !m_templateSaved)
        return;
    // Tied to the main window: a designer left open after it closed tells no one.
    QObject *receiver = m_window ? static_cast<QObject *>(m_window) : session;
    QObject::connect(session, &DesignerSession::saved, receiver,
                     [handler = m_templateSaved](const QString &path) { handler(path); });
}

void ApplicationReportActions::printerProperties() {
    try {
        choosePrinterProperties(m_context, m_prompter, PrinterList::fromSystem());
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("Printer Properties."), error);
    }
}

} // namespace tavrel
