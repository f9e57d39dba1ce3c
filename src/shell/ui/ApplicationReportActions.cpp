#include "shell/ui/ApplicationReportActions.h"

#include "base/ErrorReport.h"
#include "base/IniFile.h"
#include "print/PrinterOutput.h"
#include "render/PageEngine.h"
#include "shell/AppContext.h"
#include "shell/ReportJob.h"
#include "shell/SettingsStore.h"
#include "shell/ui/DesignerSession.h"
#include "shell/ui/OutputProgress.h"
#include "shell/ui/PreviewSession.h"

#include <QApplication>
#include <QFile>
#include <QPageSetupDialog>
#include <QPrinter>
#include <QPrinterInfo>

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
        printWithProgress(engine, m_context.printer.printerDeviceName,
                          m_context.printer.printCopies, m_window);
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("Print Document."), error);
    }
}

void ApplicationReportActions::exportPdf(const ReportSelection &selection, const QString &pdfPath) {
    const auto inUse = [&] {
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
        if (!layOutWithProgress(report, engine, m_window))
            return;
        switch (writePdfWithProgress(engine, pdfPath, m_window)) {
        case PdfExportResult::Written:
            break;
        case PdfExportResult::Cancelled:
            return;
        }
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("Create PDF."), error);
        return;
    }
    if (!m_prompter.openDocument(pdfPath, QStringLiteral("PDF"))) {
        m_prompter.message(QStringLiteral("To view PDF file, You need to install Acrobat Reader.\n"
                                          "A PDF reader such as Evince or Okular can be installed "
                                          "from your distribution's software centre."),
                           QString(), MessageIcon::Exclamation);
    }
}

void ApplicationReportActions::openDesigner(int row, const QString &templatePath) {
    Q_UNUSED(row); // the path's extension names the kind
    DesignerSession::open(m_context, m_prompter, templatePath);
}

void ApplicationReportActions::printerProperties() {
    QPrinter printer(QPrinterInfo::printerInfo(m_context.printer.printerDeviceName));
    QPageSetupDialog dialog(&printer, m_window);
    dialog.exec();
}

} // namespace tavrel
