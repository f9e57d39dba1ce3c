#include "render/ReportSections.h"

#include "render/PlaceholderSectionRenderer.h"

namespace tavrel {

std::unique_ptr<SectionRenderer> makeSectionRenderer(SectionKind kind, const QString &templatePath,
                                                     const ReportData &data) {
    Q_UNUSED(data);
    switch (kind) {
    case SectionKind::Cover:
        return std::make_unique<PlaceholderSectionRenderer>(QStringLiteral("Cover"), templatePath);
    case SectionKind::Body:
        return std::make_unique<PlaceholderSectionRenderer>(QStringLiteral("Body"), templatePath);
    case SectionKind::Summary:
        return std::make_unique<PlaceholderSectionRenderer>(QStringLiteral("Summary"),
                                                            templatePath);
    }
    return nullptr;
}

} // namespace tavrel
