#pragma once

#include "templates/BoxInfo.h"
#include "templates/LineInfo.h"

#include <QString>

#include <array>

namespace tavrel {

class TemplateLayout;

// The print definition of one box as the renderers use it (`cCustomTemplate`): a copy of the
// box's printable properties plus the positions the renderers work out while laying out.
struct CustomTemplate {
    static constexpr qint16 NewSlot = 137;

    qint32 tImgRightEdge = 0;      // right edge of an image in designer coordinates
    qint32 tImgPrintRightEdge = 0; // the same on the printed page
    qint16 tLevel = 0;
    QString tImgSize;
    QString tImgFileName;
    bool tImgPlaced = false;
    bool tBoxAtNewPage = false;
    bool tDisplayLabel = false;
    bool tOrderInfo = false;
    bool tLogo = false;
    qint32 tLeftSpace = 0; // room left of the box's text
    qint32 tTextAlign = 0;
    QString tHeaderText;
    QString tCaption;
    bool tPlaced = false;
    qint32 tForeColor = 0;
    qint32 tBackColor = WhiteColor;
    bool tFontUnderLine = false;
    bool tFontBold = false;
    QString tFontName;
    qint16 tFontSize = 0;
    bool tFontItalic = false;
    bool tHeader = false;
    bool tFooter = false;
    bool tTotal = false;
    bool tBody = false;
    qint32 tHeight = 0;
    qint16 tIndex = NewSlot;
    qint32 tLeft = 0;
    qint32 tTop = 0;
    bool tVisible = false;
    qint32 tWidth = 0;
    bool tEditCaption = false;
    bool tNotes = false;
    QString tLogoFile;
    QString tNotesName;
    // Not a `cCustomTemplate` property: the container the box sits in, which the renderers need
    // to place it on the page.
    QString tContainer;

    bool operator==(const CustomTemplate &) const = default;

    static CustomTemplate fromBox(const BoxInfo &box);
};

// The print definition of one line (`cCustomLine`).
struct CustomLine {
    static constexpr qint16 NewSlot = 47;

    qint16 tIndex = NewSlot;
    qint32 tLeft = 0;
    bool tPlaced = false;
    qint32 tTop = 0;
    bool tVisible = false;
    qint32 tHeight = 0;
    qint32 tWidth = 0;
    qint32 tBackColor = 0;
    qint16 tBoderStyle = 0;
    qint32 tLine_Y = 0;
    QString tContainer;

    bool operator==(const CustomLine &) const = default;

    static CustomLine fromLine(const LineInfo &line);
};

// All print definitions of a layout, slot for slot (index 0 holds slot 1).
struct PrintDefinitions {
    std::array<CustomTemplate, 137> boxes{};
    std::array<CustomLine, 47> lines{};

    static PrintDefinitions fromLayout(const TemplateLayout &layout);
};

} // namespace tavrel
