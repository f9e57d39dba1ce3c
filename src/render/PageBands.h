#pragma once

#include "render/JobState.h"
#include "render/PictureCache.h"
#include "templates/PrintDefinitions.h"
#include "templates/TemplateLayout.h"

#include <QDateTime>
#include <QPointF>
#include <QString>

#include <functional>
#include <vector>

namespace tavrel {

class OutputHelpers;
class PageEngine;
struct ReportData;

// The values of the page captions that header and footer boxes show.
namespace PageCaptions {

// "MM-DD-YYYY"; empty for an invalid moment.
QString dateText(const QDateTime &when);
// "HH:MM:SS"; empty for an invalid moment.
QString timeText(const QDateTime &when);

// The text of a page caption ("Company Name", "Report Date", "Page n of  m", ...) on page
// pageNumber of pageTotal. Any caption that is not a page caption gives an empty text.
QString value(const QString &caption, const ReportData &data, int pageNumber, int pageTotal);

} // namespace PageCaptions

// Which band holds the "Page n of  m" box: the first placed box with that caption, in slot
// order, decides; a page field in the page body sets neither flag.
PageFieldFlags findPageFieldFlags(const TemplateLayout &layout);

// Picture sizes exactly as the engine prints them (natural size at the file's resolution, scaled
// by the size text), read through cache, which must outlive the answer. The renderers' bands and
// the designer's canvas both measure pictures with it.
PictureExtent printedPictures(PictureCache &cache);

// Draws a template's line as the designer shows it: a bar of its width and height, drawn as one
// line as thick as the bar's short side, in its colour and dash style, offset by origin.
void drawTemplateLine(PageEngine &engine, const CustomLine &line, QPointF origin);
// The same through the output helpers: while an HTML export runs, the line also goes into the
// page as a horizontal rule at the bar's top-left corner, as the body's separator lines do.
void drawTemplateLine(OutputHelpers &out, const CustomLine &line, QPointF origin);

// Draws the template's visible rectangles (the geometry recorded when they were placed),
// measured from origin (the page-body origin); with which, only those it picks.
void drawTemplateRectangles(PageEngine &engine, const TemplateLayout &layout, QPointF origin,
                            const std::function<bool(const PrintRect &)> &which = {});

// The header and footer bands of one template: their boxes (page captions, notes and labels,
// the logo, pictures), their lines, where they sit on the page and how tall they are. The cover,
// body and summary renderers all draw their bands through it.
//
// The header band starts at (MarginLeft, MarginTop); the footer band ends at the bottom of the
// printable area; each is as tall as its lowest printed box or line, a logo or picture counted
// at the size it prints (see TemplateLayout).
class PageBands {
public:
    enum class Band { Header, Footer };
    // Text of a band box that shows no page caption and no note (a section's own field);
    // by default such a box prints nothing.
    using FieldText = std::function<QString(const CustomTemplate &box)>;

    // layout and data must outlive the bands.
    PageBands(const TemplateLayout &layout, const ReportData &data);

    void setFieldText(FieldText fieldText) { m_fieldText = std::move(fieldText); }

    double height(Band band) const {
        return band == Band::Header ? m_headerHeight : m_footerHeight;
    }
    // Page position of the band's top-left corner on the engine's current paper and margins.
    QPointF origin(Band band, const PageEngine &engine) const;
    // Page position of the page body ("MainPort"): right below the header band.
    QPointF bodyOrigin(const PageEngine &engine) const;

    bool isEmpty(Band band) const;
    const PageFieldFlags &pageFields() const { return m_pageFields; }
    // Whether the band is left out of the page flow, for the page-field pass to draw.
    bool isDeferred(Band band) const {
        return band == Band::Header ? m_pageFields.inHeader : m_pageFields.inFooter;
    }

    // Draws the band on the engine's current page (or overlay). Page captions read page
    // pageNumber of pageTotal. Leaves the engine's font, colours and alignment changed.
    void draw(OutputHelpers &out, Band band, int pageNumber, int pageTotal) const;

    // The band's boxes in slot order, and its lines.
    const std::vector<CustomTemplate> &boxes(Band band) const {
        return band == Band::Header ? m_headerBoxes : m_footerBoxes;
    }

private:
    void drawBox(OutputHelpers &out, const CustomTemplate &box, QPointF origin, int pageNumber,
                 int pageTotal) const;
    QString boxText(const CustomTemplate &box, int pageNumber, int pageTotal) const;

    const TemplateLayout &m_layout;
    const ReportData &m_data;
    PictureCache m_pictureSizes;
    FieldText m_fieldText;
    std::vector<CustomTemplate> m_headerBoxes;
    std::vector<CustomTemplate> m_footerBoxes;
    std::vector<CustomLine> m_headerLines;
    std::vector<CustomLine> m_footerLines;
    double m_headerHeight = 0;
    double m_footerHeight = 0;
    PageFieldFlags m_pageFields;
};

// The engine alignment code (0 left, 1 centre, 2 right) for a box's `_TextAlign`, whose codes
// are the designer label's (0 left, 1 right, 2 centre).
int engineAlignment(qint32 boxTextAlign);

// Sets the engine's font, text colour and box fill for a box. A white box is not filled, so it
// never hides lines drawn before it; the brush colour is still set for the HTML paragraph.
void applyBoxStyle(OutputHelpers &out, const CustomTemplate &box);

} // namespace tavrel
