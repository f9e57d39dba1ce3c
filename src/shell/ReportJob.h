#pragma once

#include "render/JobState.h"
#include "render/PrintJob.h"
#include "render/ReportData.h"
#include "render/ReportSections.h"
#include "shell/MenuChecks.h"
#include "templates/ReportSelection.h"
#include "templates/TemplateKind.h"

#include <QDateTime>

#include <functional>
#include <memory>

namespace tavrel {

class ExportFragmentWriter;
class PageEngine;
class Prompter;
struct AppContext;

// One report job of the application: the selection, the inputs the renderers read, the job
// state, and the section renderers, ready to run on an engine. The window program, the
// unattended print and the command-line tool all lay reports out through it.
class ReportJob {
public:
    // reportTime: the "Report Date"/"Report Time" of the job (now, unless a test fixes it).
    ReportJob(const AppContext &context, const MenuSelection &selection, Prompter &prompter,
              QDateTime reportTime = QDateTime::currentDateTime());
    ~ReportJob();

    const ReportData &data() const { return m_data; }
    JobState &job() { return m_job; }
    const JobState &job() const { return m_job; }
    PrintSettings printSettings() const { return m_settings; }

    // Lays the report out on engine. yieldToUi is called between cover and body and may process
    // events; fragments receives the HTML/RTF output of an export run (may be null).
    void run(PageEngine &engine, const std::function<void()> &yieldToUi = {},
             const ExportFragmentWriter *fragments = nullptr);

    // The print selection of the job file (defaults written back), as the main window shows it.
    static MenuSelection selectionFromJobFile(AppContext &context);
    // A selection as read from a job or group file, with its paths resolved against the job
    // file's folder.
    static MenuSelection menuSelection(const AppContext &context, const ReportSelection &selection);

private:
    MenuSelection m_selection;
    ReportData m_data;
    JobState m_job;
    PrintSettings m_settings;
    std::unique_ptr<SectionRenderer> m_cover;
    std::unique_ptr<SectionRenderer> m_body;
    std::unique_ptr<SectionRenderer> m_summary;
};

// A selection that prints only the section of a template's kind, as the designer's preview,
// print and live preview do.
MenuSelection sectionOnlySelection(TemplateKind kind, const QString &templatePath);

// The orientation of a job: the body template's when the body prints, otherwise the first
// printable template's.
bool jobIsLandscape(const MenuSelection &selection);

} // namespace tavrel
