#pragma once

#include "shell/ui/ReportActions.h"

#include <memory>

class QWidget;

namespace tavrel {

class Prompter;
struct AppContext;

// The main window's report commands for the real program: lay the report out with the report
// job and show, print or export it.
class ApplicationReportActions : public ReportActions {
public:
    ApplicationReportActions(AppContext &context, Prompter &prompter);
    ~ApplicationReportActions() override;

    void setWindow(QWidget *window) { m_window = window; }

    void preview(const MenuSelection &selection, const QString &caption) override;
    void print(const MenuSelection &selection) override;
    void exportPdf(const MenuSelection &selection, const QString &pdfPath) override;
    void openDesigner(int row, const QString &templatePath) override;
    void printerProperties() override;

private:
    AppContext &m_context;
    Prompter &m_prompter;
    QWidget *m_window = nullptr;
};

} // namespace tavrel
