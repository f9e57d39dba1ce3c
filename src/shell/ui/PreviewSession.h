#pragma once

#include "preview/PreviewActions.h"
#include "shell/MenuChecks.h"
#include "shell/ReportExport.h"

#include <QObject>

#include <memory>

class QWidget;

namespace tavrel {

class LayoutJob;
class PageEngine;
class Prompter;
class ReportJob;
class frmPrintpreview;
struct AppContext;

// One print preview: the engine that holds the document, the job that lays it out, and the
// preview window's commands that need the job (print, HTML, RTF). It belongs to its preview
// window and goes with it.
class PreviewSession : public QObject, public PreviewActions {
    Q_OBJECT

public:
    // Shows the preview window at once and lays the report out into it on a layout thread, with
    // progress and Cancel in frmMsgbox in front of the preview; page 1 is on screen while later
    // pages are still being laid out. Returns when layout has ended (the window keeps painting
    // and answering meanwhile); after Cancel the pages laid out so far stay in the preview.
    static frmPrintpreview *start(AppContext &context, Prompter &prompter,
                                  const ReportSelection &selection, const QString &caption,
                                  QWidget *mainWindow);
    ~PreviewSession() override;

    void print() override;
    void rerunHtml() override;
    QString rerunRtf() override;
    void exportSpreadsheet() override;
    void about() override;
    void help() override;

private:
    PreviewSession(AppContext &context, Prompter &prompter, const ReportSelection &selection);
    void layOut(frmPrintpreview *window, QWidget *mainWindow);
    ExportOptions exportOptions();

    AppContext &m_context;
    Prompter &m_prompter;
    ReportSelection m_selection;
    std::unique_ptr<PageEngine> m_engine;
    std::unique_ptr<ReportJob> m_job;
    // Declared after the engine and the job it uses, so that it goes (cancelled and joined)
    // before them.
    std::unique_ptr<LayoutJob> m_layout;
};

// The about box text and the help document, shared by the windows.
void showAbout(Prompter &prompter);
void openHelp(Prompter &prompter);

} // namespace tavrel
