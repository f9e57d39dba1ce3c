#pragma once

#include "templates/TemplateKind.h"
#include "templates/TemplateLayout.h"

#include <QJsonObject>

namespace tavrel {

// A template as JSON for scripts and tests: "kind", "otherInfo", and "boxes", "lines" and
// "rectangles" with their slot numbers and every file key (named without the leading "_"),
// listing the elements the writer would write. Booleans are JSON booleans, single-precision
// values are given as their shortest text reads.
class TemplateJson {
public:
    static QJsonObject toJson(const TemplateLayout &layout, TemplateKind kind);
};

} // namespace tavrel
