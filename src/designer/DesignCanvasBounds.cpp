#include "designer/DesignCanvas.h"

#include "designer/DesignerDocument.h"

#include <algorithm>

namespace tavrel {

// Where a box may go and what prints past the printable area: the bounds checks behind every
// drop, move and resize on the canvas, and the warning for elements that stick out.

QString DesignCanvas::containerAt(QPoint pagePoint, const TemplateLayout &layout) const {
    const PageArea area = pageArea();
    const PictureExtent sizes = pictures();
    const qint32 header = std::max(layout.bandHeight(Container::header(), sizes), EmptyBandStrip);
    const qint32 footer = std::max(layout.bandHeight(Container::footer(), sizes), EmptyBandStrip);
    if (pagePoint.y() < area.marginTop + header)
        return Container::header();
    if (pagePoint.y() >= area.printableBottom() - footer)
        return Container::footer();
    return Container::mainPort();
}

bool DesignCanvas::allowedAt(const TemplateLayout &layout, const BoxInfo &box,
                             const QString &container, const QRect &r,
                             const QList<int> &ignored) const {
    const PageArea area = pageArea();
    if (!LayoutEdits::fitsContainer(box, container))
        return false;
    if (r.x() < 0 || r.y() < 0 || r.x() + r.width() > area.printableWidth())
        return false;
    // The footer grows upwards as its boxes reach lower, so only the page's height limits it.
    const qint32 top = container == Container::footer()
                           ? area.marginTop
                           : layout.containerOrigin(container, area, pictures()).y();
    if (top + r.y() + r.height() > area.printableBottom())
        return false;
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &other = layout.box(slot);
        if (!other.placed || ignored.contains(slot) || other.container != container)
            continue;
        if (r.intersects(layout.printedRect(other, pictures())))
            return false;
    }
    return true;
}

DesignCanvas::Landing DesignCanvas::land(const TemplateLayout &layout, const BoxInfo &box,
                                         const QRect &pageRect, const QList<int> &ignored) const {
    Landing landing;
    landing.container = containerAt(pageRect.topLeft(), layout);
    landing.position =
        pageRect.topLeft() - layout.containerOrigin(landing.container, pageArea(), pictures());
    // The footer grows upwards from the bottom margin: a box dropped on its strip above the
    // band's boxes becomes the band's new top row.
    if (landing.container == Container::footer())
        landing.position.setY(std::max(0, landing.position.y()));
    landing.allowed = allowedAt(layout, box, landing.container,
                                QRect(landing.position, pageRect.size()), ignored);
    return landing;
}

QList<int> DesignCanvas::outOfBounds() const {
    const TemplateLayout &layout = m_document.layout();
    const PageArea area = pageArea();
    const QRect printable(area.marginLeft, area.marginTop, area.printableWidth(),
                          area.printableBottom() - area.marginTop);
    const auto outside = [&](const QRect &r) {
        return r.left() < printable.left() || r.top() < printable.top() ||
               r.x() + r.width() > printable.x() + printable.width() ||
               r.y() + r.height() > printable.y() + printable.height();
    };
    QList<int> found;
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        if (layout.box(slot).placed && outside(boxPageRect(slot)))
            found.append(slot);
    }
    for (int slot = 1; slot <= TemplateLayout::LineCapacity; ++slot) {
        if (layout.line(slot).placed && outside(linePageRect(slot)))
            found.append(-slot);
    }
    for (int slot = 1; slot <= TemplateLayout::RectCapacity; ++slot) {
        if (layout.rect(slot).rectVisible && outside(rectPageRect(slot)))
            found.append(1000 + slot);
    }
    return found;
}

QString DesignCanvas::outOfBoundsText() const {
    const QList<int> found = outOfBounds();
    if (found.isEmpty())
        return {};
    QStringList names;
    for (int element : found) {
        if (element > 1000)
            names.append(QStringLiteral("a rectangle"));
        else if (element < 0)
            names.append(QStringLiteral("a line"));
        else
            names.append(QLatin1Char('"') + m_document.layout().box(element).caption +
                         QLatin1Char('"'));
    }
    names.removeDuplicates();
    return QStringLiteral("Prints outside the printable area (%1 x %2 in): %3.")
        .arg(pageArea().printableWidth() / 1440.0, 0, 'f', 2)
        .arg((pageArea().printableBottom() - pageArea().marginTop) / 1440.0, 0, 'f', 2)
        .arg(names.join(QStringLiteral(", ")));
}

} // namespace tavrel
