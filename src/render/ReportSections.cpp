#include "render/ReportSections.h"

#include "base/ErrorReport.h"
#include "render/BodyRenderer.h"
#include "render/CoverRenderer.h"
#include "render/SummaryRenderer.h"

namespace tavrel {

std::unique_ptr<SectionRenderer> makeSectionRenderer(SectionKind kind,
                                                     std::optional<TemplateLayout> layout,
                                                     const ReportData &data) {
    switch (kind) {
    case SectionKind::Cover:
        return std::make_unique<CoverRenderer>(std::move(layout), data);
    case SectionKind::Body:
        return std::make_unique<BodyRenderer>(layout ? std::move(*layout) : TemplateLayout(), data);
    case SectionKind::Summary:
        return std::make_unique<SummaryRenderer>(std::move(layout), data);
    }
    return nullptr;
}

QString sectionProcedureName(SectionKind kind) {
    switch (kind) {
    case SectionKind::Cover:
        return QStringLiteral("Cover Page Preview.");
    case SectionKind::Summary:
        return QStringLiteral("Summary Page Preview.");
    case SectionKind::Body:
        break;
    }
    // The body has no procedure of its own: its errors end the job and its caller reports them.
    return QString();
}

void reportDiagnostics(Prompter &prompter, const std::vector<RenderDiagnostic> &diagnostics) {
    for (const RenderDiagnostic &diagnostic : diagnostics)
        reportError(prompter, diagnostic.procedure, diagnostic.error);
}

} // namespace tavrel
