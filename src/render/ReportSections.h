#pragma once

#include "render/ReportData.h"
#include "render/SectionRenderer.h"

#include <QString>

#include <memory>

namespace tavrel {

enum class SectionKind { Cover, Body, Summary };

// The renderer of one report section laid out by the template at templatePath. data must outlive
// the renderer.
std::unique_ptr<SectionRenderer> makeSectionRenderer(SectionKind kind, const QString &templatePath,
                                                     const ReportData &data);

} // namespace tavrel
