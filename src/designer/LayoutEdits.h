#pragma once

#include "templates/TemplateKind.h"
#include "templates/TemplateLayout.h"

#include <QList>
#include <QRect>
#include <QString>

namespace tavrel {

// What a new box shows: a catalogue field, a free note or label, the logo or an image.
struct NewBoxRequest {
    enum class Type { Field, Note, Logo, Image };
    Type type = Type::Field;
    QString caption; // the catalogue caption, or the note's text
    QString fontName = QStringLiteral("Arial");
    qint16 fontSize = 8;
};

// The alignment and sizing commands of a multiple selection.
enum class AlignCommand { Lefts, Rights, Tops, Bottoms, Width, Height, Both, SameColor };

// A box's geometry before an alignment, for putting it back.
struct BoxGeometry {
    int slot = 0;
    qint32 left = 0;
    qint32 top = 0;
    qint32 width = 0;
    qint32 height = 0;
};

// Editing operations on a layout value, free of any window: the designer's commands call them on
// a copy and hand the copy to the undo stack.
namespace LayoutEdits {

// The captions the field list offers for a kind, in catalogue order.
QStringList fieldCaptions(TemplateKind kind);

// A fresh box for a request, not yet placed (slot 137).
BoxInfo makeBox(const NewBoxRequest &request);
// Puts box into the first free slot at (left, top) of container and returns the slot, or
// TemplateLayout::NoFreeBoxSlot when every slot is taken (nothing placed).
int placeBox(TemplateLayout &layout, BoxInfo box, const QString &container, qint32 left,
             qint32 top);
// Sets the section flags (header, footer, body, total) from the container and caption.
void setSectionFlags(BoxInfo &box);
// Row levels of the boxes in a container: 1 for the topmost row, counting distinct tops.
void assignLevels(TemplateLayout &layout);

// Whether a box may sit in a container: the bands take only page fields, notes and pictures.
bool fitsContainer(const BoxInfo &box, const QString &container);

// Applies an alignment command to the selected picked; the first slot is the reference. Returns
// the geometry every changed box had before.
QList<BoxGeometry> align(TemplateLayout &layout, const QList<int> &picked, AlignCommand command);
void restoreGeometry(TemplateLayout &layout, const QList<BoxGeometry> &before);

// Keeps the listed boxes inside the printable area: each moves (and, wider than the area, narrows)
// so that its printed rectangle stays within the printable width and below its container's
// top and above the bottom of the printable area. Returns the slots it changed.
QList<int> clampBoxes(TemplateLayout &layout, const QList<int> &picked, const PageArea &area,
                      const PictureExtent &pictures = {});
// Gives every placed logo and image box whose picture prints the size it prints at, so that the
// box's own geometry (the property panel, the saved file) is what the page shows.
void fitPictureBoxes(TemplateLayout &layout, const PictureExtent &pictures);
// The same for a line or a rectangle, across the printable width.
void clampLine(LineInfo &line, const PageArea &area);
void clampRect(PrintRect &rect, const PageArea &area);

// Removes a box from the page and frees its slot.
void clearBox(TemplateLayout &layout, int slot);
void clearLine(TemplateLayout &layout, int slot);
void clearRect(TemplateLayout &layout, int slot);
// Records a rectangle's frame as its placed geometry, the values that are saved and printed.
void recordRectPlacement(PrintRect &rect);

// Places a copy of each listed box offset by (dx, dy) into free picked; returns the new picked
// (fewer than asked when the picked ran out).
QList<int> duplicateBoxes(TemplateLayout &layout, const QList<BoxInfo> &boxes, qint32 dx,
                          qint32 dy);

// Slots of the placed boxes in the header and footer bands.
QList<int> bandBoxSlots(const TemplateLayout &layout);
// Copies the band boxes of source into layout (after clearing layout's own band boxes); returns
// the number copied before the picked ran out.
int copyHeaderFooter(TemplateLayout &layout, const TemplateLayout &source);

// The right edge of the furthest body column in twips (0 without body columns).
qint32 bodyColumnsRight(const TemplateLayout &layout);

} // namespace LayoutEdits

} // namespace tavrel
