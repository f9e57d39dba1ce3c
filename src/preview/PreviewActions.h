#pragma once

#include <QString>

namespace tavrel {

// What the preview window asks of the report side: the commands that need the job that
// produced the document (its printer, its templates, its export settings) rather than the
// recorded pages the window holds.
class PreviewActions {
public:
    virtual ~PreviewActions() = default;

    // Prints the document on the job's current printer.
    virtual void print() = 0;
    // Re-runs the job that produced the preview with HTML export on and RTF export off; the
    // job writes the pages and opens the first one itself.
    virtual void rerunHtml() = 0;
    // Re-runs the body-only job with RTF export on and HTML export off and returns the file it
    // wrote (the engine's export file name), or an empty text when nothing was written. The
    // window opens the file.
    virtual QString rerunRtf() = 0;
    // Asks where to save the item list of the job's body template as a spreadsheet, writes it
    // and opens it; nothing when the job has no body template.
    virtual void exportSpreadsheet() {}
    virtual void about() = 0;
    virtual void help() = 0;
};

// Does nothing; for tests and for a preview of pages that no job can produce again.
class NoPreviewActions : public PreviewActions {
public:
    void print() override {}
    void rerunHtml() override {}
    QString rerunRtf() override { return {}; }
    void about() override {}
    void help() override {}
};

} // namespace tavrel
