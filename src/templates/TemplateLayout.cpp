#include "templates/TemplateLayout.h"

#include "base/RuntimeError.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tavrel {

std::optional<PairWidthFields> pairWidthFields(const QString &caption) {
    if (caption == QLatin1String("Option Code / Description"))
        return PairWidthFields{&OtherInfo::realONNWidth, &OtherInfo::realODWidth};
    if (caption == QLatin1String("Option Note Code / Description"))
        return PairWidthFields{&OtherInfo::realANNWidth, &OtherInfo::realADWidth};
    return std::nullopt;
}

namespace {

template <typename Array> auto &slotOf(Array &array, int slot) {
    if (slot < 1 || slot > int(array.size()))
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    return array[std::size_t(slot - 1)];
}

template <typename Array, typename Taken> int firstFree(const Array &array, Taken taken, int none) {
    for (std::size_t i = 0; i < array.size(); ++i) {
        if (!taken(array[i]))
            return int(i) + 1;
    }
    return none;
}

} // namespace

PageArea PageArea::letter(bool landscape, qint32 margin) {
    PageArea area;
    if (landscape)
        std::swap(area.pageWidth, area.pageHeight);
    area.marginLeft = area.marginTop = area.marginRight = area.marginBottom = margin;
    return area;
}

BoxInfo &TemplateLayout::box(int slot) {
    return slotOf(m_boxes, slot);
}

const BoxInfo &TemplateLayout::box(int slot) const {
    return slotOf(m_boxes, slot);
}

LineInfo &TemplateLayout::line(int slot) {
    return slotOf(m_lines, slot);
}

const LineInfo &TemplateLayout::line(int slot) const {
    return slotOf(m_lines, slot);
}

PrintRect &TemplateLayout::rect(int slot) {
    return slotOf(m_rects, slot);
}

const PrintRect &TemplateLayout::rect(int slot) const {
    return slotOf(m_rects, slot);
}

int TemplateLayout::freeBoxSlot() const {
    return firstFree(
        m_boxes, [](const BoxInfo &box) { return box.placed; }, NoFreeBoxSlot);
}

int TemplateLayout::freeLineSlot() const {
    return firstFree(
        m_lines, [](const LineInfo &line) { return line.placed; }, NoFreeLineSlot);
}

int TemplateLayout::freeRectSlot() const {
    return firstFree(
        m_rects, [](const PrintRect &rect) { return rect.rectVisible; }, NoFreeRectSlot);
}

int TemplateLayout::placedBoxCount() const {
    return int(std::count_if(m_boxes.begin(), m_boxes.end(),
                             [](const BoxInfo &box) { return box.placed; }));
}

int TemplateLayout::placedLineCount() const {
    return int(std::count_if(m_lines.begin(), m_lines.end(),
                             [](const LineInfo &line) { return line.placed; }));
}

int TemplateLayout::visibleRectCount() const {
    return int(std::count_if(m_rects.begin(), m_rects.end(),
                             [](const PrintRect &rect) { return rect.rectVisible; }));
}

QString TemplateLayout::pictureSizeOf(const BoxInfo &box) const {
    const QString size =
        box.logo ? other.logoSize : (box.imgSize.isEmpty() ? other.imageSize : box.imgSize);
    return size.isEmpty() ? QStringLiteral("100%") : size;
}

QString TemplateLayout::pictureFileOf(const BoxInfo &box) {
    if (box.logo)
        return box.logoFile;
    return box.imgPlaced ? box.imgFileName : QString();
}

QRect TemplateLayout::printedRect(const BoxInfo &box, const PictureExtent &pictures) const {
    const QRect own(box.left, box.top, box.width, box.height);
    const QString file = pictureFileOf(box);
    if (file.isEmpty() || !pictures)
        return own;
    const std::optional<QSizeF> size = pictures(file, pictureSizeOf(box));
    if (!size)
        return own;
    return {box.left, box.top, qint32(std::lround(std::min(size->width(), 1e9))),
            qint32(std::lround(std::min(size->height(), 1e9)))};
}

qint32 TemplateLayout::bandHeight(const QString &container, const PictureExtent &pictures) const {
    qint64 height = 0;
    for (const BoxInfo &box : m_boxes) {
        if (box.placed && box.container == container) {
            const QRect r = printedRect(box, pictures);
            height = std::max(height, qint64(r.y()) + r.height());
        }
    }
    for (const LineInfo &line : m_lines) {
        if (line.placed && line.container == container)
            height = std::max(height, qint64(line.top) + line.height);
    }
    return qint32(std::min<qint64>(height, std::numeric_limits<qint32>::max()));
}

QPoint TemplateLayout::containerOrigin(const QString &container, const PageArea &area,
                                       const PictureExtent &pictures) const {
    if (container == Container::header())
        return {area.marginLeft, area.marginTop};
    if (container == Container::footer())
        return {area.marginLeft,
                area.printableBottom() - bandHeight(Container::footer(), pictures)};
    return {area.marginLeft, area.marginTop + bandHeight(Container::header(), pictures)};
}

} // namespace tavrel
