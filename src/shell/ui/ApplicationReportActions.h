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

    void preview(const ReportSelection &selection, const QString &caption) override;
    void print(const ReportSelection &selection) override;
    void exportPdf(const ReportSelection &selection, const QString &pdfPath) override;
    void openDesigner(int row, const QString &templatePath) override;
    void printerProperties() override;
    void setTemplateSavedHandler(std::function<void(const QString &path)> handler) override {
        m_templateSaved = std::move(handler);
    }

private:
    AppContext &m_context;
    Prompter &m_prompter;
    QWidget *m_window = nullptr;
    std::function<void(const QString &path)> m_templateSaved;
};

} // namespace tavrel
