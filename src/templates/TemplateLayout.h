#pragma once

#include <optional>

#include "templates/BoxInfo.h"
#include "templates/LineInfo.h"
#include "templates/PrintRect.h"

#include <QPoint>
#include <QRect>
#include <QSizeF>
#include <QString>

#include <array>
#include <functional>

namespace tavrel {

// How a template sits on the page. The renderers and the designer both follow this model.
//
// - Every position is in twips from the top-left corner of the element's container.
// - The printable area runs from (MarginLeft, MarginTop) to (PageWidth - MarginRight,
//   PageHeight - MarginBottom); the page is Letter, 12240 x 15840 twips, turned for landscape.
// - The header band "shpheaderfooter(0)" starts at the top-left corner of the printable area.
//   A band is as tall as its contents: the lowest printed bottom of its boxes and lines, 0 when
//   it holds none.
// - A box prints over its own rectangle, except a logo or image box whose picture file prints:
//   that one covers the picture at its printed size (`LogoSize` for the logo, the box's or the
//   template's `ImageSize` for an image) from the box's top-left corner.
// - "MainPort", the page body, starts at the left margin right below the header band:
//   page y = MarginTop + header band height + top. Rectangles have no container and are
//   measured from the MainPort origin as well.
//   - Body template: the body columns (`_Body`) are the column caption row, at their own top;
//     item rows start below the lowest column bottom. The total boxes (`_Total`) keep their
//     distances to one another and begin where the last row ended: the smallest top among them
//     is the start of the totals section.
//   - Cover and summary templates: a box prints at its own position; boxes above it that need
//     more room than designed push it down (the renderers' per-level running positions).
// - The footer band "shpheaderfooter(1)" ends at the bottom of the printable area: its top is
//   PageHeight - MarginBottom - footer band height.
struct PageArea {
    static constexpr qint32 LetterShortSide = 12240;
    static constexpr qint32 LetterLongSide = 15840;

    qint32 pageWidth = LetterShortSide;
    qint32 pageHeight = LetterLongSide;
    qint32 marginLeft = 0;
    qint32 marginTop = 0;
    qint32 marginRight = 0;
    qint32 marginBottom = 0;

    static PageArea letter(bool landscape, qint32 margin);
    qint32 printableWidth() const { return pageWidth - marginLeft - marginRight; }
    qint32 printableBottom() const { return pageHeight - marginBottom; }
};

// The template-wide values of the "[Other Info]" section.
struct OtherInfo {
    QString logoSize;
    QString imageSize;
    bool landscape = false;
    // Widths of the code and description texts of option lines (ONN, OD) and option-note lines
    // (ANN, AD) under an item, in twips.
    float realONNWidth = 0;
    float realODWidth = 0;
    float realANNWidth = 0;
    float realADWidth = 0;

    bool operator==(const OtherInfo &) const = default;
};

// The code and description widths that a pair box ("Option Code / Description", "Option Note
// Code / Description") prints its lines in, as members of OtherInfo.
struct PairWidthFields {
    float OtherInfo::*code;
    float OtherInfo::*description;
};
// The widths of the pair box with this caption; none for any other caption.
std::optional<PairWidthFields> pairWidthFields(const QString &caption);

// The printed size in twips of a picture file at a size text ("75%"), or none when the file
// does not print (no file, not a picture). The renderers and the designer answer it through the
// same picture reader, so both see one size; without one, picture boxes keep their own size.
using PictureExtent =
    std::function<std::optional<QSizeF>(const QString &path, const QString &size)>;

// One page layout: the template-wide values and the fixed-capacity element arrays, addressed by
// 1-based slot numbers. Slot access outside the capacity throws RuntimeError 9 (subscript out
// of range).
class TemplateLayout {
public:
    static constexpr int BoxCapacity = 137;
    static constexpr int LineCapacity = 47;
    static constexpr int RectCapacity = 20;
    // What the free-slot finders answer when every slot is taken.
    static constexpr int NoFreeBoxSlot = 200;
    static constexpr int NoFreeLineSlot = 100;
    static constexpr int NoFreeRectSlot = 100;

    OtherInfo other;

    BoxInfo &box(int slot);
    const BoxInfo &box(int slot) const;
    LineInfo &line(int slot);
    const LineInfo &line(int slot) const;
    PrintRect &rect(int slot);
    const PrintRect &rect(int slot) const;

    // First slot from 1 upward whose box is not placed, or NoFreeBoxSlot.
    int freeBoxSlot() const;
    // First slot whose line is not placed, or NoFreeLineSlot.
    int freeLineSlot() const;
    // First rectangle that is not visible, or NoFreeRectSlot.
    int freeRectSlot() const;

    int placedBoxCount() const;
    int placedLineCount() const;
    int visibleRectCount() const;

    // The size text a logo or image box prints its picture at ("100%" when none is set).
    QString pictureSizeOf(const BoxInfo &box) const;
    // The picture file a box prints, empty for a box that shows no picture.
    static QString pictureFileOf(const BoxInfo &box);
    // The rectangle a box covers on the printed page, in twips of its container (see above).
    QRect printedRect(const BoxInfo &box, const PictureExtent &pictures = {}) const;

    // Height of a band: the lowest printed bottom of its placed boxes and lines, 0 when empty.
    qint32 bandHeight(const QString &container, const PictureExtent &pictures = {}) const;
    // Where a container's top-left corner falls on the page, in page twips.
    QPoint containerOrigin(const QString &container, const PageArea &area,
                           const PictureExtent &pictures = {}) const;

    bool operator==(const TemplateLayout &) const = default;

private:
    std::array<BoxInfo, BoxCapacity> m_boxes{};
    std::array<LineInfo, LineCapacity> m_lines{};
    std::array<PrintRect, RectCapacity> m_rects{};
};

} // namespace tavrel
