#include "shell/ui/DesignerSession.h"

#include "base/ErrorReport.h"
#include "designer/frmCustomLayout.h"
#include "print/PrinterOutput.h"
#include "render/PageEngine.h"
#include "shell/AppContext.h"
#include "shell/ReportJob.h"
#include "shell/ui/PreviewSession.h"
#include "shell/ui/PrinterProperties.h"

#include <QFileInfo>

namespace tavrel {

DesignerSession::DesignerSession(AppContext &context, Prompter &prompter)
    : m_context(context)
    , m_prompter(prompter) {}

frmCustomLayout *DesignerSession::open(AppContext &context, Prompter &prompter,
                                       const QString &templatePath) {
    auto *session = new DesignerSession(context, prompter);
    auto *window = new frmCustomLayout(environmentOf(context), prompter, *session);
    // The session goes with its window.
    session->setParent(window);
    session->m_window = window;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->openOn(templatePath);
    window->show();
    return window;
}

DesignerEnvironment DesignerSession::environmentOf(AppContext &context) {
    DesignerEnvironment environment;
    environment.job = &context.job;
    environment.templateFolder = context.paths.templateFolder;
    environment.documentName = context.paths.activeDocumentName;
    environment.marginLeft = context.margins.left;
    environment.marginTop = context.margins.top;
    environment.marginRight = context.margins.right;
    environment.marginBottom = context.margins.bottom;
    environment.fontName = context.printer.fontName;
    environment.fontSize = qint16(context.printer.fontSize);
    environment.fieldLengths = &context.fieldLengths;
    return environment;
}

DesignerSession *DesignerSession::of(frmCustomLayout *window) {
    return window ? window->findChild<DesignerSession *>(QString(), Qt::FindDirectChildrenOnly)
                  : nullptr;
}

void DesignerSession::preview(TemplateKind kind, const QString &templatePath) {
    PreviewSession::start(m_context, m_prompter, sectionOnlySelection(kind, templatePath),
                          QFileInfo(templatePath).fileName(), m_window);
}

void DesignerSession::print(TemplateKind kind, const QString &templatePath) {
    try {
        ReportJob report(m_context, sectionOnlySelection(kind, templatePath), m_prompter);
        PageEngine engine;
        report.run(engine);
        printDocumentOn(engine, m_context.printer.printerDeviceName, m_context.printer.printCopies);
        m_prompter.status(printedText(int(engine.pages().size()), m_context));
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("Print Document."), error);
    }
}

TemplatePreview DesignerSession::livePreview(TemplateKind kind, const QString &templatePath) {
    return previewTemplate(m_context, kind, templatePath);
}

void DesignerSession::templateSaved(const QString &templatePath) {
    emit saved(templatePath);
}

void DesignerSession::about() {
    showAbout(m_prompter);
}

void DesignerSession::help() {
    openHelp(m_prompter);
}

} // namespace tavrel
