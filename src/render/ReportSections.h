#pragma once

#include "render/ReportData.h"
#include "render/SectionRenderer.h"
#include "templates/TemplateLayout.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace tavrel {

class Prompter;

enum class SectionKind { Cover, Body, Summary };

// The renderer of one report section laid out by a template the job has read; without a layout
// (the template could not be read) a cover or summary draws nothing and a body draws an empty
// template. data must outlive the renderer.
std::unique_ptr<SectionRenderer>
makeSectionRenderer(SectionKind kind, std::optional<TemplateLayout> layout, const ReportData &data);

// The procedure name under which a section's problems are reported.
QString sectionProcedureName(SectionKind kind);

// Shows each diagnostic in the error report, in order.
void reportDiagnostics(Prompter &prompter, const std::vector<RenderDiagnostic> &diagnostics);

} // namespace tavrel
