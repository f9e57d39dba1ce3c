#include "templates/PrintRect.h"

#include <algorithm>

namespace tavrel {

namespace {

float shifted(float designerValue, float designerReference, float printReference) {
    if (designerValue == designerReference)
        return printReference;
    return printReference + (designerValue - designerReference);
}

} // namespace

float PrintRect::RectangleTopOnPrint(float designerValue, float designerReference,
                                     float printReference) {
    return shifted(designerValue, designerReference, printReference);
}

float PrintRect::RectangleRightOnPrint(float designerValue, float designerReference,
                                       float printReference) {
    return shifted(designerValue, designerReference, printReference);
}

float PrintRect::RectangleBottomOnPrint(float designerValue, float designerReference,
                                        float printReference, float bound) {
    return std::min(shifted(designerValue, designerReference, printReference), bound);
}

} // namespace tavrel
