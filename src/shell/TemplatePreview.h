#pragma once

#include "templates/TemplateKind.h"

#include <QImage>
#include <QList>
#include <QString>

namespace tavrel {

struct AppContext;

// The first pages of a template laid out with the job's data, as the designer's live preview
// shows them while the template is being edited.
struct TemplatePreview {
    QList<QImage> pages;
    int pagesLaidOut = 0;  // pages the layout produced before it stopped
    bool complete = false; // the whole section was laid out: page fields are filled in
    QString problem;       // why nothing could be shown, or a message the layout raised
};

struct TemplatePreviewOptions {
    double dpi = 96;
    int pages = 2;
    // A body of more items than this stops once the wanted pages are laid out, so that an edit
    // never waits for a whole large report.
    int wholeJobItems = 1500;
};

// Runs a job that prints only the section of templatePath's kind, through the same renderers as
// the report, and returns its first pages as pictures.
TemplatePreview previewTemplate(const AppContext &context, TemplateKind kind,
                                const QString &templatePath,
                                const TemplatePreviewOptions &options = {});

} // namespace tavrel
