#include "render/ReportSections.h"

#include "render/BodyRenderer.h"
#include "render/CoverRenderer.h"
#include "render/SummaryRenderer.h"

namespace tavrel {

std::unique_ptr<SectionRenderer> makeSectionRenderer(SectionKind kind, const QString &templatePath,
                                                     const ReportData &data, Prompter &prompter) {
    switch (kind) {
    case SectionKind::Cover:
        return std::make_unique<CoverRenderer>(templatePath, data, &prompter);
    case SectionKind::Body:
        return std::make_unique<BodyRenderer>(templatePath, data, prompter);
    case SectionKind::Summary:
        return std::make_unique<SummaryRenderer>(templatePath, data, &prompter);
    }
    return nullptr;
}

} // namespace tavrel
