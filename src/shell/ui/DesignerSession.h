#pragma once

#include "designer/DesignerActions.h"

#include <QObject>

class QWidget;

namespace tavrel {
class frmCustomLayout;
struct DesignerEnvironment;
} // namespace tavrel

namespace tavrel {

class Prompter;
struct AppContext;

// The designer window opened from the main window, with its preview and print commands wired to
// the report job: only the section of the template being designed is printed.
class DesignerSession : public QObject, public DesignerActions {
    Q_OBJECT

public:
    // The window deletes itself, and the session with it, when closed.
    static frmCustomLayout *open(AppContext &context, Prompter &prompter,
                                 const QString &templatePath);
    // What the designer takes from the loaded job: its file, folders, margins and font.
    static DesignerEnvironment environmentOf(AppContext &context);
    // The session of a window open() made.
    static DesignerSession *of(frmCustomLayout *window);

    void preview(TemplateKind kind, const QString &templatePath) override;
    void print(TemplateKind kind, const QString &templatePath) override;
    TemplatePreview livePreview(TemplateKind kind, const QString &templatePath) override;
    void about() override;
    void help() override;
    void templateSaved(const QString &templatePath) override;

signals:
    // The designer wrote a template file.
    void saved(const QString &templatePath);

private:
    DesignerSession(AppContext &context, Prompter &prompter);

    AppContext &m_context;
    Prompter &m_prompter;
    QWidget *m_window = nullptr;
};

} // namespace tavrel
