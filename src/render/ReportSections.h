#pragma once

#include "render/ReportData.h"
#include "render/SectionRenderer.h"

#include <QString>

#include <memory>

namespace tavrel {

class Prompter;

enum class SectionKind { Cover, Body, Summary };

// The renderer of one report section laid out by the template at templatePath; template reading
// problems are reported through prompter. data and prompter must outlive the renderer.
std::unique_ptr<SectionRenderer> makeSectionRenderer(SectionKind kind, const QString &templatePath,
                                                     const ReportData &data, Prompter &prompter);

} // namespace tavrel
