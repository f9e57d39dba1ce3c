#pragma once

#include "render/PageBands.h"
#include "render/SectionRenderer.h"
#include "templates/TemplateLayout.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace tavrel {

class PageEngine;
class SectionFlow;
struct CustomTemplate;
struct JobState;
struct PrintSettings;
struct ReportData;

// What the summary and cover renderers share: a template of boxes placed one by one in the page
// body between a header and a footer band. The section takes its template, lets the subclass
// fill its field lists, draws the header band, hands the body to the subclass with a
// SectionFlow that breaks pages (footer and header around every break), draws the last footer
// and then the rectangles and lines of the body. Bands holding the "Page n of  m" box are left
// for the page-field pass.
class BoxSectionRenderer : public SectionRenderer {
public:
    // Errors become diagnostics under procedureName. Without a layout (its template could not
    // be read, which the job has reported) the section draws nothing. data must outlive the
    // renderer.
    BoxSectionRenderer(std::optional<TemplateLayout> layout, const ReportData &data,
                       QString procedureName);
    ~BoxSectionRenderer() override;

    void render(OutputHelpers &out) override;
    int pageCount() const override { return m_pageCount; }
    PageFieldFlags pageFields() const override;
    void drawPageFieldBand(OutputHelpers &out, Band band, int pageNumber, int pageTotal) override;
    std::vector<RenderDiagnostic> diagnostics() const override { return m_diagnostics; }

    const TemplateLayout &layout() const { return m_layout; }

protected:
    // Fills the section's field lists from the loaded layout, before anything is drawn.
    virtual void fillFields() = 0;
    // Draws the boxes of the page body through flow.
    virtual void drawBody(OutputHelpers &out, SectionFlow &flow) = 0;

    const ReportData &data() const { return m_data; }
    const QString &procedureName() const { return m_procedureName; }
    // Keeps an error for the caller to report under the section's procedure name.
    void addDiagnostic(const RuntimeError &error);

    // Sets the box's font, colours and alignment over the job's default font, so that a box
    // without a font of its own never inherits the box drawn before it.
    void applyStyle(OutputHelpers &out, const CustomTemplate &box) const;
    // The page x of a body box's left edge.
    double boxLeft(const PageEngine &engine, const CustomTemplate &box) const;
    // Text height of text over width in the current font; one line ("W") for an empty text.
    static double measure(PageEngine &engine, const QString &text, double width);
    // The height a picture box takes, 0 when its file is missing or no picture.
    double pictureHeight(const CustomTemplate &box) const;
    // Draws a picture or logo box at (left, top); returns false for any other box.
    bool drawPictureBox(OutputHelpers &out, const CustomTemplate &box, double left,
                        double top) const;

    // The room between a box's edges and its texts.
    static constexpr double TextInset = 30;

private:
    void renderSection(OutputHelpers &out);
    void drawBand(OutputHelpers &out, PageBands::Band band) const;
    void drawBodyFrames(OutputHelpers &out, const SectionFlow &flow) const;
    QString pictureSize(const CustomTemplate &box) const;

    const ReportData &m_data;
    QString m_procedureName;
    bool m_hasLayout = false;
    TemplateLayout m_layout;
    std::vector<RenderDiagnostic> m_diagnostics;
    std::unique_ptr<PageBands> m_bands;
    QString m_defaultFont;
    int m_defaultSize = 8;
    int m_pageCount = 0;
};

// A job of one section alone (the designer's cover or summary preview): the print job's opening
// steps in the job's orientation, the section from page 1, EndDoc, and, when pageFields is set
// and the section has a page field, the page-field pass over pages 1 to PageCount.
void printSectionOnly(OutputHelpers &out, JobState &job, const PrintSettings &settings,
                      SectionRenderer &section, bool pageFields);

} // namespace tavrel
