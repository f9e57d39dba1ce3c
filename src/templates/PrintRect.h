#pragma once

#include <QtGlobal>

namespace tavrel {

// One rectangle of a layout (`cPrintRect`). It has two sets of geometry: the frame the designer
// shows (left, top, width, height, borderColor: the "_Left" .. "_BorderColor" keys) and the
// geometry recorded when it was placed (rectLeft .. rectColor: the "_Placed..." keys), which
// is what the renderers print. Rectangles are the one element kind kept in single precision.
struct PrintRect {
    static constexpr qint16 NewSlot = 20;
    // Saved rectangles whose top is at least this far down are in location 2, the others in 1.
    static constexpr float LowerLocationTop = 3500.0f;

    // Designer frame.
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;
    qint32 borderColor = 0;

    // `cPrintRect` properties.
    qint16 rectLocation = 0;
    qint16 rectIndex = NewSlot;
    bool rectVisible = false;
    bool rectPlaced = false;
    float rectWidth = 0;
    float rectHeight = 0;
    float rectTop = 0;
    float rectLeft = 0;
    float rectBottom = 0;
    float rectRight = 0;
    qint32 rectColor = 0;

    bool operator==(const PrintRect &) const = default;

    static qint16 locationForTop(float top) { return top >= LowerLocationTop ? 2 : 1; }

    // Maps a designer coordinate onto the page: the print reference shifted by the value's
    // distance from the designer reference (the reference itself when the two are equal).
    static float RectangleTopOnPrint(float designerValue, float designerReference,
                                     float printReference);
    static float RectangleRightOnPrint(float designerValue, float designerReference,
                                       float printReference);
    // The same shift, then held at the bound: a bottom never passes it (e.g. the bottom of the
    // printable area). The renderers rely on this rule.
    static float RectangleBottomOnPrint(float designerValue, float designerReference,
                                        float printReference, float bound);
};

} // namespace tavrel
