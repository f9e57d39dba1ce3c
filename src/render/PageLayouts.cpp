#include "render/PageLayouts.h"

#include "render/DisplayList.h"

#include <QPageSize>
#include <QSizeF>

namespace tavrel {

QPageLayout pageLayoutOf(const Page &page) {
    constexpr double TwipsPerPoint = 20;
    // The paper is described upright; the orientation turns it.
    const double shortSide = page.landscape ? page.height : page.width;
    const double longSide = page.landscape ? page.width : page.height;
    const QPageSize size(QSizeF(shortSide / TwipsPerPoint, longSide / TwipsPerPoint),
                         QPageSize::Point, QString(), QPageSize::FuzzyMatch);
    return QPageLayout(size, page.landscape ? QPageLayout::Landscape : QPageLayout::Portrait,
                       QMarginsF(0, 0, 0, 0));
}

} // namespace tavrel
