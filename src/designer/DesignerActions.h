#pragma once

#include "shell/TemplatePreview.h"
#include "templates/TemplateKind.h"

#include <QString>

namespace tavrel {

// What the designer asks of the rest of the program: the windows and jobs it only opens. The
// application wires these to the report job (body-only, cover-only or summary-only run of the
// template being designed), the about box and the help.
class DesignerActions {
public:
    virtual ~DesignerActions() = default;

    // Preview and print the report with only this template's section printable.
    virtual void preview(TemplateKind kind, const QString &templatePath) = 0;
    virtual void print(TemplateKind kind, const QString &templatePath) = 0;
    virtual void about() = 0;
    virtual void help() = 0;
    // The first pages of the template at templatePath laid out with the job's data, for the
    // live preview; nothing to show when no job is loaded.
    virtual TemplatePreview livePreview(TemplateKind, const QString &) { return {}; }
    // The designer wrote the template at templatePath (Save or Save As), so that lists of
    // templates elsewhere can show it.
    virtual void templateSaved(const QString &templatePath) { Q_UNUSED(templatePath); }
};

// Does nothing; for tests and for a designer opened without the rest of the program.
class NoDesignerActions : public DesignerActions {
public:
    void preview(TemplateKind, const QString &) override {}
    void print(TemplateKind, const QString &) override {}
    void about() override {}
    void help() override {}
};

} // namespace tavrel
