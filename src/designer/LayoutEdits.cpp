#include "designer/LayoutEdits.h"

#include "spec/FieldCatalog.h"

#include <QMap>

#include <algorithm>
#include <set>

namespace tavrel::LayoutEdits {

namespace {

constexpr qint32 LogoWidth = 2880;
constexpr qint32 LogoHeight = 1080;
constexpr qint32 ImageSide = 1440;

qint32 captionWidth(const QString &caption, qint16 fontSize) {
    // About half an em per character leaves room for the printed value in most fields.
    const qint32 perChar = qint32(fontSize) * 11;
    return std::clamp<qint32>(qint32(caption.size()) * perChar + 240, 720, 4320);
}

bool isBand(const QString &container) {
    return container == Container::header() || container == Container::footer();
}

} // namespace

QStringList fieldCaptions(TemplateKind kind) {
    switch (kind) {
    case TemplateKind::Custom:
        return FieldCatalog::itemCaptions() + FieldCatalog::pageCaptions() +
               FieldCatalog::totalCaptions();
    case TemplateKind::Summary:
        return FieldCatalog::pageCaptions() + FieldCatalog::totalCaptions() +
               FieldCatalog::orderHeaderCaptions();
    case TemplateKind::Cover:
        return FieldCatalog::pageCaptions() + FieldCatalog::orderHeaderCaptions();
    case TemplateKind::Unknown:
        break;
    }
    return FieldCatalog::designerCaptions();
}

BoxInfo makeBox(const NewBoxRequest &request) {
    BoxInfo box;
    box.fontName = request.fontName;
    box.fontSize = request.fontSize;
    box.backColor = qint32(WhiteColor);
    box.nameIndex = FieldCatalog::NoNameIndex;
    box.height = qint32(request.fontSize) * 20 + 100;
    switch (request.type) {
    case NewBoxRequest::Type::Field:
        box.caption = request.caption;
        box.nameIndex = qint16(FieldCatalog::indexOfCaption(request.caption));
        box.headerText = BoxInfo::headerTextForCaption(request.caption);
        box.width = captionWidth(request.caption, request.fontSize);
        break;
    case NewBoxRequest::Type::Note:
        box.caption = request.caption;
        box.notes = true;
        box.notesName = request.caption;
        box.width = captionWidth(request.caption, request.fontSize);
        break;
    case NewBoxRequest::Type::Logo:
        box.caption = QStringLiteral("Logo");
        box.logo = true;
        box.width = LogoWidth;
        box.height = LogoHeight;
        break;
    case NewBoxRequest::Type::Image:
        box.caption = QStringLiteral("Image");
        box.nameIndex = qint16(FieldCatalog::indexOfCaption(box.caption));
        box.imgPlaced = true;
        box.width = ImageSide;
        box.height = ImageSide;
        break;
    }
    box.defaultWidth = box.width;
    box.defaultHeight = box.height;
    box.toolTipText = box.caption;
    return box;
}

int placeBox(TemplateLayout &layout, BoxInfo box, const QString &container, qint32 left,
             qint32 top) {
    const int slot = layout.freeBoxSlot();
    if (slot == TemplateLayout::NoFreeBoxSlot)
        return slot;
    box.index = qint16(slot);
    box.placed = true;
    box.visible = true;
    box.container = Container::normalized(container);
    box.placeContainer = box.container;
    box.left = std::max<qint32>(0, left);
    box.top = std::max<qint32>(0, top);
    box.placeLeft = box.left;
    box.placeTop = box.top;
    setSectionFlags(box);
    layout.box(slot) = box;
    assignLevels(layout);
    return slot;
}

void setSectionFlags(BoxInfo &box) {
    box.header = box.container == Container::header();
    box.footer = box.container == Container::footer();
    const bool inBody = !box.header && !box.footer;
    box.total = inBody && FieldCatalog::totalCaptions().contains(box.caption);
    box.body = inBody && !box.total;
}

void assignLevels(TemplateLayout &layout) {
    QMap<QString, std::set<qint32>> tops;
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &box = layout.box(slot);
        if (box.placed)
            tops[box.container].insert(box.top);
    }
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        BoxInfo &box = layout.box(slot);
        if (!box.placed)
            continue;
        const std::set<qint32> &rows = tops[box.container];
        box.level = qint16(std::distance(rows.begin(), rows.find(box.top)) + 1);
    }
}

bool fitsContainer(const BoxInfo &box, const QString &container) {
    if (!isBand(container))
        return true;
    return box.notes || box.logo || box.imgPlaced ||
           FieldCatalog::isHeaderFooterCaption(box.caption);
}

QList<BoxGeometry> align(TemplateLayout &layout, const QList<int> &picked, AlignCommand command) {
    QList<BoxGeometry> before;
    if (picked.size() < 2)
        return before;
    const BoxInfo reference = layout.box(picked.first());
    for (int i = 1; i < picked.size(); ++i) {
        BoxInfo &box = layout.box(picked[i]);
        const BoxGeometry old{picked[i], box.left, box.top, box.width, box.height};
        switch (command) {
        case AlignCommand::Lefts:
            box.left = reference.left;
            break;
        case AlignCommand::Rights:
            box.left = std::max<qint32>(0, reference.right() - box.width);
            break;
        case AlignCommand::Tops:
            box.top = reference.top;
            break;
        case AlignCommand::Bottoms:
            box.top = std::max<qint32>(0, reference.bottom() - box.height);
            break;
        case AlignCommand::Width:
            box.width = reference.width;
            break;
        case AlignCommand::Height:
            box.height = reference.height;
            break;
        case AlignCommand::Both:
            box.width = reference.width;
            box.height = reference.height;
            break;
        case AlignCommand::SameColor:
            box.foreColor = reference.foreColor;
            box.backColor = reference.backColor;
            box.changeBackcolor = reference.changeBackcolor;
            box.custBkColor = reference.custBkColor;
            break;
        }
        if (box.width != old.width || box.height != old.height)
            box.resized = true;
        if (box.left != old.left || box.top != old.top || box.width != old.width ||
            box.height != old.height)
            before.append(old);
    }
    assignLevels(layout);
    return before;
}

void restoreGeometry(TemplateLayout &layout, const QList<BoxGeometry> &before) {
    for (const BoxGeometry &g : before) {
        BoxInfo &box = layout.box(g.slot);
        if (!box.placed)
            continue;
        box.left = g.left;
        box.top = g.top;
        box.width = g.width;
        box.height = g.height;
    }
    assignLevels(layout);
}

QList<int> clampBoxes(TemplateLayout &layout, const QList<int> &picked, const PageArea &area,
                      const PictureExtent &pictures) {
    QList<int> changed;
    const qint32 width = area.printableWidth();
    for (int slot : picked) {
        BoxInfo &box = layout.box(slot);
        if (!box.placed)
            continue;
        const BoxInfo before = box;
        const bool picture =
            !TemplateLayout::pictureFileOf(box).isEmpty() &&
            layout.printedRect(box, pictures).size() != QSize(box.width, box.height);
        if (!picture && box.width > width) {
            box.width = width;
            box.resized = true;
            box.resizedWidth = box.width;
        }
        QRect printed = layout.printedRect(box, pictures);
        box.left = std::clamp(box.left, 0, std::max(0, width - printed.width()));
        // The footer grows upwards with its boxes; the others end at the printable bottom.
        if (box.container != Container::footer()) {
            const qint32 room =
                area.printableBottom() - layout.containerOrigin(box.container, area, pictures).y();
            printed = layout.printedRect(box, pictures);
            box.top = std::clamp(box.top, 0, std::max(0, room - printed.height()));
        }
        box.top = std::max(0, box.top);
        if (box.left != before.left || box.top != before.top || box.width != before.width)
            changed.append(slot);
    }
    if (!changed.isEmpty())
        assignLevels(layout);
    return changed;
}

void fitPictureBoxes(TemplateLayout &layout, const PictureExtent &pictures) {
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        BoxInfo &box = layout.box(slot);
        if (!box.placed || TemplateLayout::pictureFileOf(box).isEmpty())
            continue;
        const QRect printed = layout.printedRect(box, pictures);
        box.width = printed.width();
        box.height = printed.height();
    }
}

void clampLine(LineInfo &line, const PageArea &area) {
    const qint32 width = area.printableWidth();
    line.width = std::min(line.width, width);
    line.left = std::clamp(line.left, 0, std::max(0, width - line.width));
    line.top = std::max(0, line.top);
    line.lineY = line.top;
}

void clampRect(PrintRect &rect, const PageArea &area) {
    const auto width = float(area.printableWidth());
    rect.width = std::min(rect.width, width);
    rect.left = std::clamp(rect.left, 0.0f, std::max(0.0f, width - rect.width));
    rect.top = std::max(0.0f, rect.top);
}

void clearBox(TemplateLayout &layout, int slot) {
    layout.box(slot) = BoxInfo{};
}

void clearLine(TemplateLayout &layout, int slot) {
    layout.line(slot) = LineInfo{};
}

void clearRect(TemplateLayout &layout, int slot) {
    layout.rect(slot) = PrintRect{};
}

void recordRectPlacement(PrintRect &rect) {
    rect.rectLeft = rect.left;
    rect.rectTop = rect.top;
    rect.rectWidth = rect.width;
    rect.rectHeight = rect.height;
    rect.rectRight = rect.left + rect.width;
    rect.rectBottom = rect.top + rect.height;
    rect.rectColor = rect.borderColor;
    rect.rectPlaced = true;
    rect.rectLocation = PrintRect::locationForTop(rect.top);
}

QList<int> duplicateBoxes(TemplateLayout &layout, const QList<BoxInfo> &boxes, qint32 dx,
                          qint32 dy) {
    QList<int> picked;
    for (const BoxInfo &box : boxes) {
        const int slot = placeBox(layout, box, box.container, box.left + dx, box.top + dy);
        if (slot == TemplateLayout::NoFreeBoxSlot)
            break;
        picked.append(slot);
    }
    return picked;
}

QList<int> bandBoxSlots(const TemplateLayout &layout) {
    QList<int> picked;
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &box = layout.box(slot);
        if (box.placed && isBand(box.container))
            picked.append(slot);
    }
    return picked;
}

int copyHeaderFooter(TemplateLayout &layout, const TemplateLayout &source) {
    for (int slot : bandBoxSlots(layout))
        clearBox(layout, slot);
    int copied = 0;
    for (int slot : bandBoxSlots(source)) {
        const BoxInfo &box = source.box(slot);
        if (placeBox(layout, box, box.container, box.left, box.top) ==
            TemplateLayout::NoFreeBoxSlot)
            break;
        ++copied;
    }
    return copied;
}

qint32 bodyColumnsRight(const TemplateLayout &layout) {
    qint32 right = 0;
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &box = layout.box(slot);
        if (box.placed && box.body && box.container == Container::mainPort())
            right = std::max(right, box.right());
    }
    return right;
}

} // namespace tavrel::LayoutEdits
