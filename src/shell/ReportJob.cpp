#include "shell/ReportJob.h"

#include "base/ErrorReport.h"
#include "render/OutputHelpers.h"
#include "render/PageEngine.h"
#include "shell/AppContext.h"
#include "shell/JobPaths.h"
#include "spec/FieldCatalog.h"
#include "spec/FieldLengths.h"
#include "templates/PrintSelection.h"
#include "templates/TemplateLayout.h"
#include "templates/TemplateReader.h"

#include <QFileInfo>

namespace tavrel {

namespace {

QDateTime savedTimeOf(const AppContext &context) {
    const QFileInfo document(context.paths.activeDocument);
    if (document.exists())
        return document.lastModified();
    return QFileInfo(context.paths.sifPath).lastModified();
}

} // namespace

ReportSelection sectionOnlySelection(TemplateKind kind, const QString &templatePath) {
    ReportSelection selection;
    const std::size_t row = kind == TemplateKind::Cover ? 0 : kind == TemplateKind::Custom ? 1 : 2;
    selection.templates[row] = templatePath;
    selection.printable[row] = ReportSelection::flag(true);
    return selection;
}

bool jobIsLandscape(const std::array<const TemplateLayout *, 3> &layouts) {
    if (layouts[1])
        return layouts[1]->other.landscape;
    for (const TemplateLayout *layout : layouts) {
        if (layout)
            return layout->other.landscape;
    }
    return false;
}

ReportJob::ReportJob(const AppContext &context, const ReportSelection &selection,
                     Prompter &prompter, QDateTime reportTime)
    : m_prompter(prompter)
    , m_selection(selection) {
    m_data.spec = &context.spec;
    m_data.order = &context.order;
    m_data.fieldLengths = &context.fieldLengths;
    m_data.sifPath = context.paths.sifPath;
    m_data.activeDocument = context.paths.activeDocument;
    m_data.companyName = context.preferences.companyName;
    m_data.cifPresent = context.cifPresent;
    m_data.showLabel = context.printer.showLabel;
    m_data.showSubTotalOptions = context.printer.showSubTotalOptions;
    m_data.reportTime = std::move(reportTime);
    m_data.savedTime = savedTimeOf(context);
    m_data.marginLeft = context.margins.left;
    m_data.marginRight = context.margins.right;
    m_data.marginTop = context.margins.top;
    m_data.marginBottom = context.margins.bottom;

    m_settings.fontName = context.printer.fontName;
    m_settings.fontSize = context.printer.fontSize;
    m_settings.fontBold = context.printer.fontBold;
    m_settings.fontItalic = context.printer.fontItalic;
    m_settings.fontUnderline = context.printer.fontUnderLine;
    m_settings.marginLeft = context.margins.left;
    m_settings.marginRight = context.margins.right;
    m_settings.marginTop = context.margins.top;
    m_settings.marginBottom = context.margins.bottom;

    const auto wanted = [&](std::size_t row) {
        return selection.isPrintable(row) && !selection.templates[row].isEmpty();
    };
    m_job.coverPrintable = wanted(0);
    m_job.bodyPrintable = wanted(1);
    m_job.summaryPrintable = wanted(2);
    // Each template once per job, in print order, so that its messages come in that order.
    std::optional<TemplateLayout> cover;
    std::optional<TemplateLayout> body;
    std::optional<TemplateLayout> summary;
    if (m_job.coverPrintable)
        cover = readTemplate(SectionKind::Cover, selection.templates[0]);
    if (m_job.bodyPrintable)
        body = readTemplate(SectionKind::Body, selection.templates[1]);
    if (m_job.summaryPrintable)
        summary = readTemplate(SectionKind::Summary, selection.templates[2]);
    m_job.landscape = context.landscapeOverride.value_or(jobIsLandscape(
        {cover ? &*cover : nullptr, body ? &*body : nullptr, summary ? &*summary : nullptr}));
    if (m_job.coverPrintable)
        m_cover = makeSectionRenderer(SectionKind::Cover, std::move(cover), m_data);
    if (m_job.bodyPrintable)
        m_body = makeSectionRenderer(SectionKind::Body, std::move(body), m_data);
    if (m_job.summaryPrintable)
        m_summary = makeSectionRenderer(SectionKind::Summary, std::move(summary), m_data);
}

ReportJob::~ReportJob() = default;

std::optional<TemplateLayout> ReportJob::readTemplate(SectionKind kind, const QString &path) {
    try {
        return TemplateReader::load(path, m_prompter);
    } catch (const RuntimeError &error) {
        // The body's error ends the job when it runs, reported by whoever runs it, as a failing
        // body always has been; a cover or summary reports under its own name and is left out.
        if (kind == SectionKind::Body)
            m_templateError = error;
        else
            reportError(m_prompter, sectionProcedureName(kind), error);
        return std::nullopt;
    }
}

void ReportJob::run(PageEngine &engine, const std::function<void()> &yieldToUi,
                    const ExportFragmentWriter *fragments) {
    PrintCallbacks callbacks;
    callbacks.yieldToUi = yieldToUi;
    m_job.cancel = nullptr;
    runDocument(engine, callbacks, fragments);
    reportDiagnostics();
}

void ReportJob::layOut(PageEngine &engine, const CancelToken *cancel,
                       const ExportFragmentWriter *fragments) {
    m_job.cancel = cancel;
    runDocument(engine, {}, fragments);
    m_job.cancel = nullptr;
}

void ReportJob::runDocument(PageEngine &engine, const PrintCallbacks &callbacks,
                            const ExportFragmentWriter *fragments) {
    if (m_templateError)
        throw *m_templateError;
    OutputHelpers out(engine, m_job, fragments);
    // The PDF's document information: who the report is from and which document it prints.
    engine.navigation().author = m_data.companyName;
    engine.navigation().subject =
        QFileInfo(m_data.activeDocument.isEmpty() ? m_data.sifPath : m_data.activeDocument)
            .completeBaseName();
    PrintDocument(out, m_job, m_settings, {m_cover.get(), m_body.get(), m_summary.get()},
                  callbacks);
}

std::vector<RenderDiagnostic> ReportJob::diagnostics() const {
    std::vector<RenderDiagnostic> all;
    for (const auto *section : {m_cover.get(), m_body.get(), m_summary.get()}) {
        if (!section)
            continue;
        const std::vector<RenderDiagnostic> found = section->diagnostics();
        all.insert(all.end(), found.begin(), found.end());
    }
    return all;
}

void ReportJob::reportDiagnostics() const {
    tavrel::reportDiagnostics(m_prompter, diagnostics());
}

ReportSelection ReportJob::selectionFromJobFile(AppContext &context) {
    return resolvedSelection(context, context.job.reportSelection(context.paths.templateFolder));
}

ReportSelection ReportJob::resolvedSelection(const AppContext &context, ReportSelection selection) {
    for (QString &path : selection.templates)
        path = PathRules::resolveAgainst(context.paths.jobFile, PrintSelection::localPath(path));
    return selection;
}

} // namespace tavrel
