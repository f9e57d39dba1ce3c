#include "render/SummaryRendererFlow.h"

#include "render/OutputHelpers.h"
#include "render/PageEngine.h"
#include "templates/PrintDefinitions.h"

#include <algorithm>

namespace tavrel {

SectionFlow::SectionFlow(PageEngine &engine, double bodyTop, double bodyBottom, PageHooks hooks)
    : m_engine(engine)
    , m_bodyTop(bodyTop)
    , m_bodyBottom(bodyBottom)
    , m_hooks(std::move(hooks)) {}

int SectionFlow::levelOf(int level) {
    return level >= 1 && level <= LevelCount ? level : 1;
}

double SectionFlow::growthAbove(double designedY, int level) const {
    double growth = 0;
    for (const PlacedBox &above : m_boxes) {
        if (above.level <= level && above.designedBottom <= designedY)
            growth = std::max(growth, above.bottomShift);
    }
    return growth;
}

double SectionFlow::place(int level, double designedTop, double designedBottom, double height) {
    const int index = levelOf(level);
    double y = m_bodyTop + designedTop + shift() + growthAbove(designedTop, index);
    for (const PlacedBox &above : m_boxes) {
        if (above.level == index && above.designedBottom <= designedTop)
            y = std::max(y, above.runningPosition);
    }
    y = std::max(y, m_bodyTop);
    if (y + height > m_bodyBottom && y > m_bodyTop) {
        newPage(y);
        y = m_bodyTop;
    }
    PlacedBox box;
    box.level = index;
    box.designedTop = designedTop;
    box.designedBottom = std::max(designedTop, designedBottom);
    box.topShift = y - (m_bodyTop + designedTop + shift());
    box.bottomShift = box.topShift;
    box.runningPosition = y + LevelStep;
    box.topPage = box.bottomPage = pageCount();
    box.top = y;
    box.bottom = y + (box.designedBottom - designedTop);
    m_boxes.push_back(box);
    return y;
}

void SectionFlow::reached(double y) {
    if (m_boxes.empty())
        return;
    PlacedBox &box = m_boxes.back();
    box.runningPosition = y + LevelStep;
    box.bottomShift = std::max(box.topShift, y - (m_bodyTop + box.designedBottom + shift()));
    if (pageCount() != box.bottomPage) {
        box.bottomPage = pageCount();
        box.bottom = y;
    } else {
        box.bottom = std::max(box.bottom, y);
    }
}

double SectionFlow::lineAt(double y, double height) {
    if (y + height > m_bodyBottom && y > m_bodyTop) {
        newPage(y);
        return m_bodyTop;
    }
    return y;
}

SectionFlow::Position SectionFlow::positionOf(double designedY) const {
    const double growth = growthAbove(designedY, LevelCount);
    // The last page on which the position is not above the body top.
    for (int page = pageCount(); page >= 1; --page) {
        const double y = m_bodyTop + designedY + m_pageShifts[std::size_t(page - 1)] + growth;
        if (y >= m_bodyTop || page == 1)
            return {page, y};
    }
    return {1, m_bodyTop};
}

SectionFlow::Frame SectionFlow::frameOf(double designedTop, double designedBottom) const {
    const PlacedBox *first = nullptr;
    for (const PlacedBox &box : m_boxes) {
        if (box.designedTop >= designedTop && box.designedBottom <= designedBottom &&
            (!first || box.designedTop < first->designedTop))
            first = &box;
    }
    if (!first) {
        const Position top = positionOf(designedTop);
        const Position bottom = positionOf(designedBottom);
        return {top.sectionPage, top.y,
                bottom.sectionPage == top.sectionPage ? bottom.y : std::max(top.y, m_bodyBottom)};
    }
    Frame frame;
    frame.sectionPage = first->topPage;
    frame.top = std::max(m_bodyTop, first->top - (first->designedTop - designedTop));
    frame.bottom = frame.top;
    for (const PlacedBox &box : m_boxes) {
        if (box.designedTop < designedTop || box.designedBottom > designedBottom ||
            box.topPage != frame.sectionPage)
            continue;
        const double bottom = box.bottomPage == frame.sectionPage
                                  ? box.bottom + (designedBottom - box.designedBottom)
                                  : m_bodyBottom;
        frame.bottom = std::max(frame.bottom, bottom);
    }
    return frame;
}

void SectionFlow::newPage(double y) {
    if (m_hooks.endPage)
        m_hooks.endPage();
    m_engine.NewPage();
    const double delta = m_bodyTop - y;
    m_pageShifts.push_back(shift() + delta);
    for (PlacedBox &box : m_boxes)
        box.runningPosition += delta;
    if (m_hooks.startPage)
        m_hooks.startPage();
}

void drawBoxBackground(OutputHelpers &out, const CustomTemplate &box, double left, double top,
                       double height) {
    if ((ColorNumber(box.tBackColor) & 0xFFFFFF) == WhiteColor)
        return;
    PageEngine &engine = out.engine();
    engine.setBrushStyle(BrushStyles::Solid);
    engine.setBrushColor(ColorNumber(box.tBackColor) & 0xFFFFFF);
    engine.setPenStyle(PenStyles::Transparent);
    engine.DrawRectangle(left, top, left + box.tWidth, top + std::max<double>(height, box.tHeight));
    engine.setPenStyle(PenStyles::Solid);
    engine.setBrushStyle(BrushStyles::Transparent);
}

} // namespace tavrel
