#pragma once

#include "base/ColorNumber.h"

#include <QString>
#include <QtGlobal>

namespace tavrel {

// Container names of the page: the body and the two bands.
namespace Container {
inline QString mainPort() {
    return QStringLiteral("MainPort");
}
inline QString header() {
    return QStringLiteral("shpheaderfooter(0)");
}
inline QString footer() {
    return QStringLiteral("shpheaderfooter(1)");
}
// Any name but the two band names stands for the body.
QString normalized(const QString &name);
} // namespace Container

// Text alignment codes of `_TextAlign`: the caption label codes that template files have
// always carried, kept so that files move between systems unchanged.
namespace TextAlign {
constexpr qint32 Left = 0;
constexpr qint32 Right = 1;
constexpr qint32 Center = 2;
constexpr qint32 Justify = 3;
} // namespace TextAlign

// Drop feedback while a box is dragged in the designer.
enum class Placeable : qint32 { None = 0, NotAllowed = 1, Allowed = 2 };

// One field box of a layout (`cBoxInfo`). The designer binds the properties that its controls
// show (font, caption, geometry, colours); here they are plain values. Geometry is twips from the
// top-left corner of the box's container.
struct BoxInfo {
    static constexpr qint16 NewSlot = 137;

    QString imgSize;
    bool imgPlaced = false;
    QString imgFileName;
    bool boxAtNewPage = false;
    bool displayLabel = false;
    bool multiSelected = false;
    bool orderInfo = false;
    QString logoFile;
    QString notesName;
    qint32 textAlign = TextAlign::Left;
    Placeable placeable = Placeable::None;
    qint16 nameIndex = 0; // 0-based into FieldCatalog::designerCaptions()
    bool changeBackcolor = false;
    qint32 custBkColor = WhiteColor;
    qint32 foreColor = 0;
    bool fontUnderLine = false;
    bool fontBold = false;
    QString fontName;
    qint16 fontSize = 0;
    bool fontItalic = false;
    bool header = false;
    bool footer = false;
    bool total = false;
    bool body = false;
    bool notes = false;
    bool editCaption = false;
    bool logo = false;
    qint32 headTextLeft = 0;
    bool resized = false;
    qint16 originLocation = 0;
    qint16 originLevel = 0;
    qint32 originLeft = 0;
    qint32 originTop = 0;
    bool replaced = false;
    QString headerText; // the field code the box prints; empty for pictures and ticks
    qint32 defaultWidth = 0;
    qint32 defaultHeight = 0;
    qint32 resizedHeight = 0;
    qint32 resizedWidth = 0;
    qint16 placedLocation = 0;
    QString caption;
    qint32 backColor = 0;
    qint32 height = 0;
    qint16 index = NewSlot; // slot number, 1..137, once the designer or reader assigns it
    qint32 left = 0;
    qint16 level = 0;
    qint16 mousePointer = 0;
    qint32 placeLeft = 0;
    qint32 placeTop = 0;
    qint16 placeLevel = 0;
    bool placed = false;
    QString toolTipText;
    qint32 top = 0;
    bool visible = false;
    qint32 width = 0;
    QString container;
    QString placeContainer;
    bool headerLeft = false;
    bool headerRight = false;
    bool headerCenter = false;
    bool footerLeft = false;
    bool footerRight = false;
    bool footerCenter = false;

    bool operator==(const BoxInfo &) const = default;

    qint32 right() const { return left + width; }
    qint32 bottom() const { return top + height; }
    // The specification field code a caption prints: empty for "Image", "Complete", "Taxable"
    // and for every caption that is not an item field.
    static QString headerTextForCaption(const QString &caption);
};

} // namespace tavrel
