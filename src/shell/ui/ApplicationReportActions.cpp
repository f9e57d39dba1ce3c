#include "shell/ui/ApplicationReportActions.h"

#include "base/ErrorReport.h"
#include "base/IniFile.h"
#include "print/PrinterOutput.h"
#include "render/PageEngine.h"
#include "render/PdfOutput.h"
#include "shell/AppContext.h"
#include "shell/ReportJob.h"
#include "shell/SettingsStore.h"
#include "shell/ui/DesignerSession.h"
#include "shell/ui/PreviewSession.h"

#include <QApplication>
#include <QFile>
#include <QPageSetupDialog>
#include <QPrinter>
#include <QPrinterInfo>

namespace tavrel {

namespace {

// Keeps the hourglass up while a job is laid out, however the command ends.
class BusyCursor {
public:
    BusyCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyCursor() { QApplication::restoreOverrideCursor(); }
    BusyCursor(const BusyCursor &) = delete;
    BusyCursor &operator=(const BusyCursor &) = delete;
};

void layOut(const AppContext &context, const MenuSelection &selection, PageEngine &engine,
            Prompter &prompter) {
    ReportJob report(context, selection, prompter);
    report.run(engine, [] { QCoreApplication::processEvents(); });
}

} // namespace

ApplicationReportActions::ApplicationReportActions(AppContext &context, Prompter &prompter)
    : m_context(context)
    , m_prompter(prompter) {}

ApplicationReportActions::~ApplicationReportActions() = default;

void ApplicationReportActions::preview(const MenuSelection &selection, const QString &caption) {
    PreviewSession::start(m_context, m_prompter, selection, caption, m_window);
}

void ApplicationReportActions::print(const MenuSelection &selection) {
    try {
        const BusyCursor busy;
        PageEngine engine;
        layOut(m_context, selection, engine, m_prompter);
        printDocumentOn(engine, m_context.printer.printerDeviceName, m_context.printer.printCopies);
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("Print Document."), error);
    }
}

void ApplicationReportActions::exportPdf(const MenuSelection &selection, const QString &pdfPath) {
    if (QFile::exists(pdfPath) && !QFile::remove(pdfPath)) {
        m_prompter.message(QStringLiteral("The file - \"") + pdfPath +
                               QStringLiteral("\" is in using. "),
                           QString(), MessageIcon::Exclamation);
        return;
    }
    try {
        const BusyCursor busy;
        PageEngine engine;
        layOut(m_context, selection, engine, m_prompter);
        writePdf(engine, pdfPath);
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
