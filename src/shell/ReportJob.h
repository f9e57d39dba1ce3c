#pragma once

#include "render/JobState.h"
#include "render/PrintJob.h"
#include "render/ReportData.h"
#include "render/ReportSections.h"
#include "shell/MenuChecks.h"
#include "templates/ReportSelection.h"
#include "templates/TemplateKind.h"
#include "templates/TemplateLayout.h"

#include <QDateTime>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace tavrel {

class CancelToken;
class ExportFragmentWriter;
class PageEngine;
class Prompter;
struct AppContext;

// One report job of the application: the selection, the inputs the renderers read, the job
// state, and the section renderers, ready to run on an engine. The window program, the
// unattended print and the command-line tool all lay reports out through it.
//
// The job reads each selected template once, when it is made, and takes the orientation from
// them; what the reading has to say ("Ran out of index", a cover or summary template that cannot
// be read) goes to prompter then, before any layout. The renderers only lay out: what they meet
// comes back as diagnostics, reported by run() or, for a job laid out on another thread, by
// reportDiagnostics() on the window thread afterwards.
class ReportJob {
public:
    // reportTime: the "Report Date"/"Report Time" of the job (now, unless a test fixes it).
    ReportJob(const AppContext &context, const ReportSelection &selection, Prompter &prompter,
              QDateTime reportTime = QDateTime::currentDateTime());
    ~ReportJob();

    const ReportData &data() const { return m_data; }
    JobState &job() { return m_job; }
    const JobState &job() const { return m_job; }
    PrintSettings printSettings() const { return m_settings; }

    // Lays the report out on engine and reports its diagnostics. yieldToUi is called between
    // cover and body and may process events; fragments receives the HTML/RTF output of an
    // export run (may be null). Throws RuntimeError, before any layout when the body template
    // could not be read.
    void run(PageEngine &engine, const std::function<void()> &yieldToUi = {},
             const ExportFragmentWriter *fragments = nullptr);

    // The same without a word to the user, for any thread: the job stops at the next row or
    // page once cancel is raised (may be null), and keeps its diagnostics for
    // reportDiagnostics(). The context must not change while it runs.
    void layOut(PageEngine &engine, const CancelToken *cancel,
                const ExportFragmentWriter *fragments = nullptr);
    // What the sections of the last layout met, in section order.
    std::vector<RenderDiagnostic> diagnostics() const;
    // Shows them through the job's prompter (window thread).
    void reportDiagnostics() const;

    // The print selection of the job file (defaults written back), as the main window shows it.
    static ReportSelection selectionFromJobFile(AppContext &context);
    // A selection as read from a job or group file, with its paths resolved against the job
    // file's folder.
    static ReportSelection resolvedSelection(const AppContext &context, ReportSelection selection);

private:
    std::optional<TemplateLayout> readTemplate(SectionKind kind, const QString &path);
    void runDocument(PageEngine &engine, const PrintCallbacks &callbacks,
                     const ExportFragmentWriter *fragments);

    Prompter &m_prompter;
    ReportSelection m_selection;
    // A body template that cannot be read ends the job before layout.
    std::optional<RuntimeError> m_templateError;
    ReportData m_data;
    JobState m_job;
    PrintSettings m_settings;
    std::unique_ptr<SectionRenderer> m_cover;
    std::unique_ptr<SectionRenderer> m_body;
    std::unique_ptr<SectionRenderer> m_summary;
};

// A selection that prints only the section of a template's kind, as the designer's preview,
// print and live preview do.
ReportSelection sectionOnlySelection(TemplateKind kind, const QString &templatePath);

// The orientation of a job from its templates (cover, body, summary; null where a section is
// not printed or its template could not be read): the body template's when the body prints,
// otherwise the first printable template's.
bool jobIsLandscape(const std::array<const TemplateLayout *, 3> &layouts);

} // namespace tavrel
