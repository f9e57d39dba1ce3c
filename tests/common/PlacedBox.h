#pragma once

#include "spec/FieldCatalog.h"
#include "templates/TemplateLayout.h"

#include <QRect>

// Places a field box as a saved template holds it: Arial 8, the catalogue's name index and
// column tag, and the section flags of its container. For tests and benchmarks that build
// templates in code.
inline tavrel::BoxInfo &placeBox(tavrel::TemplateLayout &layout, const QString &caption,
                                 const QString &container, QRect geometry,
                                 qint32 align = tavrel::TextAlign::Left) {
    using namespace tavrel;
    const int slot = layout.freeBoxSlot();
    BoxInfo &box = layout.box(slot);
    box.index = qint16(slot);
    box.placed = box.visible = true;
    box.caption = caption;
    box.nameIndex = qint16(FieldCatalog::indexOfCaption(caption));
    box.headerText = BoxInfo::headerTextForCaption(caption);
    box.container = container;
    box.header = container == Container::header();
    box.footer = container == Container::footer();
    box.body = container == Container::mainPort();
    box.fontName = QStringLiteral("Arial"); // Liberation Sans through fontconfig
    box.fontSize = 8;
    box.textAlign = align;
    box.left = geometry.x();
    box.top = geometry.y();
    box.width = geometry.width();
    box.height = geometry.height();
    return box;
}
