#pragma once

#include "render/SectionRenderer.h"

#include <QString>

namespace tavrel {

// TEMPORARY: stands in for the cover, body and summary renderers until they exist, so that the
// print job, the render command and the backends can be exercised end to end. It draws one page
// titled with the section and its template's name, and a "Page n of  m" footer in the
// page-field pass. Remove it when the real renderers land.
class PlaceholderSectionRenderer : public SectionRenderer {
public:
    PlaceholderSectionRenderer(QString sectionName, QString templatePath);

    void render(OutputHelpers &out) override;
    int pageCount() const override { return m_pageCount; }
    PageFieldFlags pageFields() const override { return {false, true}; }
    void drawPageFieldBand(OutputHelpers &out, Band band, int pageNumber, int pageTotal) override;

private:
    QString m_sectionName;
    QString m_templatePath;
    int m_pageCount = 0;
};

} // namespace tavrel
