#include "render/PlaceholderSectionRenderer.h"

#include "render/OutputHelpers.h"
#include "render/PageEngine.h"

#include <QFileInfo>

namespace tavrel {

PlaceholderSectionRenderer::PlaceholderSectionRenderer(QString sectionName, QString templatePath)
    : m_sectionName(std::move(sectionName))
    , m_templatePath(std::move(templatePath)) {}

void PlaceholderSectionRenderer::render(OutputHelpers &out) {
    PageEngine &engine = out.engine();
    const double left = engine.MarginLeft();
    const double top = engine.MarginTop();
    const double width = engine.PageWidth() - left - engine.MarginRight();
    const QString name = engine.FontName();
    const int size = engine.FontSize();

    out.SetPrintFont(name, 16, true, false, false);
    out.PrintAlignedTextBox(1, m_sectionName, left, top, width);
    out.SetPrintFont(name, 10, false, true, false);
    const QString templateName = QFileInfo(m_templatePath).fileName();
    out.PrintAlignedTextBox(1, QStringLiteral("Template: %1").arg(templateName), left,
                            engine.CurrentY() + 100, width);
    engine.setPenWidth(10);
    engine.DrawLine(left, engine.CurrentY() + 100, left + width, engine.CurrentY() + 100);
    out.SetPrintFont(name, size, false, false, false);
    out.PrintAlignedTextBox(0,
                            QStringLiteral("This section is drawn by a placeholder until its "
                                           "renderer is written."),
                            left, engine.CurrentY() + 300, width);
    m_pageCount = 1;
}

void PlaceholderSectionRenderer::drawPageFieldBand(OutputHelpers &out, Band, int pageNumber,
                                                   int pageTotal) {
    PageEngine &engine = out.engine();
    const double left = engine.MarginLeft();
    const double width = engine.PageWidth() - left - engine.MarginRight();
    out.PrintAlignedTextBox(1, pageOfText(pageNumber, pageTotal), left,
                            engine.PageHeight() - engine.MarginBottom() - 400, width);
}

} // namespace tavrel
