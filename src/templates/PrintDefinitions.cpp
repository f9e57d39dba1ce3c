#include "templates/PrintDefinitions.h"

#include "templates/TemplateLayout.h"

namespace tavrel {

CustomTemplate CustomTemplate::fromBox(const BoxInfo &box) {
    CustomTemplate t;
    t.tLevel = box.level;
    t.tImgSize = box.imgSize;
    t.tImgFileName = box.imgFileName;
    t.tImgPlaced = box.imgPlaced;
    t.tBoxAtNewPage = box.boxAtNewPage;
    t.tDisplayLabel = box.displayLabel;
    t.tOrderInfo = box.orderInfo;
    t.tLogo = box.logo;
    t.tTextAlign = box.textAlign;
    t.tHeaderText = box.headerText;
    t.tCaption = box.caption;
    t.tPlaced = box.placed;
    t.tForeColor = box.foreColor;
    // The designer's own box colour is a screen colour; on paper a box is white unless the user
    // gave it a custom background.
    t.tBackColor = box.changeBackcolor ? box.custBkColor : WhiteColor;
    t.tFontUnderLine = box.fontUnderLine;
    t.tFontBold = box.fontBold;
    t.tFontName = box.fontName;
    t.tFontSize = box.fontSize;
    t.tFontItalic = box.fontItalic;
    t.tHeader = box.header;
    t.tFooter = box.footer;
    t.tTotal = box.total;
    t.tBody = box.body;
    t.tHeight = box.height;
    t.tIndex = box.index;
    t.tLeft = box.left;
    t.tTop = box.top;
    t.tVisible = box.visible;
    t.tWidth = box.width;
    t.tEditCaption = box.editCaption;
    t.tNotes = box.notes;
    t.tLogoFile = box.logoFile;
    t.tNotesName = box.notesName;
    t.tContainer = box.container;
    return t;
}

CustomLine CustomLine::fromLine(const LineInfo &line) {
    CustomLine t;
    t.tIndex = line.index;
    t.tLeft = line.left;
    t.tPlaced = line.placed;
    t.tTop = line.top;
    t.tVisible = line.visible;
    t.tHeight = line.height;
    t.tWidth = line.width;
    t.tBackColor = line.backColor;
    t.tBoderStyle = line.boderStyle;
    t.tLine_Y = line.lineY;
    t.tContainer = line.container;
    return t;
}

PrintDefinitions PrintDefinitions::fromLayout(const TemplateLayout &layout) {
    PrintDefinitions definitions;
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot)
        definitions.boxes[std::size_t(slot - 1)] = CustomTemplate::fromBox(layout.box(slot));
    for (int slot = 1; slot <= TemplateLayout::LineCapacity; ++slot)
        definitions.lines[std::size_t(slot - 1)] = CustomLine::fromLine(layout.line(slot));
    return definitions;
}

} // namespace tavrel
