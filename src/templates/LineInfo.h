#pragma once

#include <QString>
#include <QtGlobal>

namespace tavrel {

// Line styles as the designer offers them; stored as "_BoderStyle".
enum class LineStyle : qint16 { Solid = 0, Dash = 1, Dot = 2, DashDot = 3, DashDotDot = 4 };

// One line of a layout (`cLineInfo`). A line is drawn as a thin box: left/top/width/height in
// twips relative to its container, lineY its vertical position while dragged.
struct LineInfo {
    static constexpr qint16 NewSlot = 47;

    qint16 index = NewSlot;
    qint32 left = 0;
    qint32 top = 0;
    bool placed = false;
    bool visible = false;
    qint32 height = 0;
    qint32 width = 0;
    qint32 backColor = 0;
    qint16 boderStyle = 0; // spelled like its file key
    qint32 lineY = 0;
    QString container;

    bool operator==(const LineInfo &) const = default;
};

} // namespace tavrel
