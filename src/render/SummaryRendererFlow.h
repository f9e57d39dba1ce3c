#pragma once

#include "base/ColorNumber.h"

#include <QString>

#include <functional>
#include <vector>

namespace tavrel {

class OutputHelpers;
class PageEngine;
struct CustomTemplate;

// The vertical layout of the body of a summary or cover page, shared by both renderers. Boxes
// are laid out in the order they are placed, each at its designed place (body top + its top)
// or lower, by two rules:
//
// - Running positions: every level (1 to 48; any other number counts as 1) keeps where its
//   boxes ended. A box starts no higher than LevelStep below the lowest point reached by the
//   boxes of its own level that lie wholly above it in the design, so boxes of one level stack;
//   boxes side by side on a level start together.
// - Growth: a box that ends lower than designed moves every box designed wholly below it, on
//   its own or a higher level number, down by as much, so the designed gaps and the rows of
//   side-by-side columns are kept.
//
// When a box would pass the bottom of the body a new page starts; the box, and everything
// designed after it, moves up to the body top of that page.
class SectionFlow {
public:
    static constexpr int LevelCount = 48;
    // The room left under a printed box before the next one of its level.
    static constexpr double LevelStep = 300;

    // Called around a page break: endPage before NewPage (the footer of the page), startPage
    // after it (the header of the new page).
    struct PageHooks {
        std::function<void()> endPage;
        std::function<void()> startPage;
    };

    // Where a designed position falls: the page of the section (1 = its first) and page twips.
    struct Position {
        int sectionPage = 1;
        double y = 0;
    };

    // bodyTop and bodyBottom are page twips: where the body begins below the header band and
    // the lowest point a box may reach.
    SectionFlow(PageEngine &engine, double bodyTop, double bodyBottom, PageHooks hooks);

    // The page y at which a box of the level, designed from designedTop to designedBottom (twips
    // below the body top), starts when it needs height twips; begins a new page first when the
    // box would pass the bottom and is not already at the top of a page.
    double place(int level, double designedTop, double designedBottom, double height);
    // Records the lowest point the box placed last reached.
    void reached(double y);
    // For a box drawn line by line: where its next line of the given height goes, after a new
    // page when the line would pass the bottom at y.
    double lineAt(double y, double height);

    // Where an element designed at designedY (lines of the body) belongs, moved like a box
    // there would be by the growth of the boxes above it.
    Position positionOf(double designedY) const;

    // Where a frame designed from designedTop to designedBottom goes: with the boxes it encloses
    // in the design, when there are any (its top as far above the first of them as designed,
    // its bottom as far below the lowest of them on that page), otherwise by positionOf. A
    // frame whose boxes end on a later page ends at the body bottom.
    struct Frame {
        int sectionPage = 1;
        double top = 0;
        double bottom = 0;
    };
    Frame frameOf(double designedTop, double designedBottom) const;

    double bodyTop() const { return m_bodyTop; }
    double bodyBottom() const { return m_bodyBottom; }
    int pageCount() const { return int(m_pageShifts.size()); }

    // The level a box's level number stands for.
    static int levelOf(int level);

private:
    struct PlacedBox {
        int level = 1;
        double designedTop = 0;
        double designedBottom = 0;
        double topShift = 0;    // how far the box was moved from its designed place
        double bottomShift = 0; // how far its bottom ended below the designed bottom
        double runningPosition = 0;
        // Where it went: the section pages and page twips of its top and of its bottom.
        int topPage = 1;
        double top = 0;
        int bottomPage = 1;
        double bottom = 0;
    };

    // The growth the boxes wholly above designedY pass on to a box of the level.
    double growthAbove(double designedY, int level) const;
    // Ends the page and moves the running positions by the distance from y to the body top.
    void newPage(double y);
    double shift() const { return m_pageShifts.back(); }

    PageEngine &m_engine;
    double m_bodyTop;
    double m_bodyBottom;
    PageHooks m_hooks;
    // Per page of the section: page twips minus designed twips before growth.
    std::vector<double> m_pageShifts{0.0};
    std::vector<PlacedBox> m_boxes;
};

// Fills the box area with the box's colour when it has one other than white.
void drawBoxBackground(OutputHelpers &out, const CustomTemplate &box, double left, double top,
                       double height);

} // namespace tavrel
