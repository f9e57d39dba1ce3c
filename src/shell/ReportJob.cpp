#include "shell/ReportJob.h"

#include "base/ScriptedPrompter.h"
#include "render/OutputHelpers.h"
#include "render/PageEngine.h"
#include "shell/AppContext.h"
#include "shell/JobPaths.h"
#include "templates/PrintSelection.h"
#include "templates/TemplateLayout.h"
#include "templates/TemplateReader.h"

#include <QFileInfo>

namespace tavrel {

namespace {

bool templateIsLandscape(const QString &path) {
    // Only the orientation is wanted here; the renderer reads the template again and reports.
    ScriptedPrompter quiet;
    TemplateLayout layout;
    TemplateReader::read(path, layout, quiet);
    return layout.other.landscape;
}

QDateTime savedTimeOf(const AppContext &context) {
    const QFileInfo document(context.paths.activeDocument);
    if (document.exists())
        return document.lastModified();
    return QFileInfo(context.paths.sifPath).lastModified();
}

} // namespace

MenuSelection sectionOnlySelection(TemplateKind kind, const QString &templatePath) {
    MenuSelection selection;
    const std::size_t row = kind == TemplateKind::Cover ? 0 : kind == TemplateKind::Custom ? 1 : 2;
    selection.templates[row] = templatePath;
    selection.printable[row] = true;
    return selection;
}

bool jobIsLandscape(const MenuSelection &selection) {
    if (selection.printable[1] && !selection.templates[1].isEmpty())
        return templateIsLandscape(selection.templates[1]);
    for (std::size_t row = 0; row < 3; ++row) {
        if (selection.printable[row] && !selection.templates[row].isEmpty())
            return templateIsLandscape(selection.templates[row]);
    }
    return false;
}

ReportJob::ReportJob(const AppContext &context, const MenuSelection &selection, Prompter &prompter,
                     QDateTime reportTime)
    : m_selection(selection) {
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
        return selection.printable[row] && !selection.templates[row].isEmpty();
    };
    m_job.coverPrintable = wanted(0);
    m_job.bodyPrintable = wanted(1);
    m_job.summaryPrintable = wanted(2);
    m_job.landscape = jobIsLandscape(selection);
    if (m_job.coverPrintable)
        m_cover = makeSectionRenderer(SectionKind::Cover, selection.templates[0], m_data, prompter);
    if (m_job.bodyPrintable)
        m_body = makeSectionRenderer(SectionKind::Body, selection.templates[1], m_data, prompter);
    if (m_job.summaryPrintable)
        m_summary =
            makeSectionRenderer(SectionKind::Summary, selection.templates[2], m_data, prompter);
}

ReportJob::~ReportJob() = default;

void ReportJob::run(PageEngine &engine, const std::function<void()> &yieldToUi,
                    const ExportFragmentWriter *fragments) {
    OutputHelpers out(engine, m_job, fragments);
    PrintCallbacks callbacks;
    callbacks.yieldToUi = yieldToUi;
    PrintDocument(out, m_job, m_settings, {m_cover.get(), m_body.get(), m_summary.get()},
                  callbacks);
}

MenuSelection ReportJob::selectionFromJobFile(AppContext &context) {
    return menuSelection(context, context.job.reportSelection(context.paths.templateFolder));
}

MenuSelection ReportJob::menuSelection(const AppContext &context,
                                       const ReportSelection &selection) {
    MenuSelection menu;
    for (std::size_t row = 0; row < ReportSelection::Rows; ++row) {
        menu.templates[row] = PathRules::resolveAgainst(
            context.paths.jobFile, PrintSelection::localPath(selection.templates[row]));
        menu.printable[row] = selection.isPrintable(row);
    }
    return menu;
}

} // namespace tavrel
