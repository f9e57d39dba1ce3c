// The totals section after the last row of the body pages.

#include "render/BodyRenderer.h"

#include "base/Conversions.h"
#include "render/BodyRendererLayout.h"
#include "render/OutputHelpers.h"
#include "render/PageEngine.h"
#include "render/ReportData.h"
#include "spec/FieldCatalog.h"
#include "spec/SpecData.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tavrel {

namespace {

const QString OptionTotalCaption = QStringLiteral("Total Option / Description");
// The code column of the option total when the template keeps no option-code width.
constexpr double DefaultOptionCodeWidth = 1440;

} // namespace

QString BodyRenderer::totalBoxText(const CustomTemplate &box) const {
    if (box.tNotes)
        return box.tNotesName;
    const QString value =
        m_data.spec ? BodyCellTexts::totalText(box.tCaption, m_data.spec->header) : QString();
    if (value.isEmpty() || !box.tDisplayLabel)
        return value;
    return FieldCatalog::totalLabel(box.tCaption) + QLatin1Char(' ') + value;
}

void BodyRenderer::drawTotals(OutputHelpers &out) {
    if (m_totalBoxes.empty())
        return;
    PageEngine &engine = out.engine();
    const qint32 sectionTop = BodyLayout::totalsTop(m_totalBoxes);
    qint32 sectionBottom = sectionTop;
    for (const CustomTemplate &box : m_totalBoxes)
        sectionBottom = std::max(sectionBottom, box.tTop + box.tHeight);
    // The section keeps its designed shape and starts where the last row ended; it moves to a
    // new page as a whole when it does not fit.
    m_y += BodyLayout::TotalsGap;
    breakIfNeeded(out, sectionBottom - sectionTop);
    double offset = m_y - sectionTop;
    const QPointF origin = m_bands->bodyOrigin(engine);
    // Rectangles round the totals keep their designed distance from the section's top (the
    // section's top is the reference of the shift, as RectangleTopOnPrint has it).
    drawTemplateRectangles(engine, m_layout, {origin.x(), offset},
                           [this](const PrintRect &rect) { return framesTotals(rect); });
    for (int slot = 1; slot <= TemplateLayout::LineCapacity; ++slot) {
        const LineInfo &line = m_layout.line(slot);
        if (line.placed && line.container == Container::mainPort() && line.top >= sectionTop)
            drawTemplateLine(out, CustomLine::fromLine(line), {origin.x(), offset});
    }

    // Boxes below a grown option list move down by what it grew.
    qint32 grownBottom = std::numeric_limits<qint32>::max();
    double growth = 0;
    for (const CustomTemplate &box : m_totalBoxes) {
        const double shift = box.tTop >= grownBottom ? growth : 0;
        m_y = offset + shift + box.tTop;
        const double left = engine.MarginLeft() + box.tLeft;
        if (box.tCaption == OptionTotalCaption && !box.tNotes) {
            const double bottom = drawOptionTotal(out, box, m_y);
            growth += std::max(0.0, bottom - (m_y + box.tHeight));
            grownBottom = std::min(grownBottom, box.tTop + box.tHeight);
            m_y = bottom;
            continue;
        }
        const QString text = totalBoxText(box);
        if (text.isEmpty())
            continue;
        applyBoxStyle(out, box);
        engine.CalcParagraph(text, box.tWidth);
        const double height = engine.TextHeight();
        if (m_rowsOnPage > 0 && needsNewPage(height, FooterReserve)) {
            endPage(out);
            offset = m_y - shift - box.tTop;
            applyBoxStyle(out, box);
        }
        engine.setTextAlign(engineAlignment(box.tTextAlign));
        out.PrintTextBox(left, m_y, box.tWidth, text);
        m_y += height;
        ++m_rowsOnPage;
    }
    m_styledColumn = -1;
}

double BodyRenderer::drawOptionTotal(OutputHelpers &out, const CustomTemplate &box, double top) {
    PageEngine &engine = out.engine();
    const double left = engine.MarginLeft() + box.tLeft;
    applyBoxStyle(out, box);
    engine.CalcParagraph(QStringLiteral("W"));
    const double lineHeight = engine.TextHeight();
    double y = top;
    if (box.tDisplayLabel) {
        engine.setTextAlign(0);
        out.PrintTextBox(left, y, box.tWidth, FieldCatalog::totalLabel(box.tCaption));
        y += lineHeight;
    }
    if (!m_data.spec)
        return y;
    const double codeWidth =
        m_layout.other.realONNWidth > 0 ? m_layout.other.realONNWidth : DefaultOptionCodeWidth;
    const double descriptionWidth = std::max(1.0, box.tWidth - codeWidth);
    for (const auto &[code, description] : BodyCellTexts::distinctOptions(*m_data.spec)) {
        // Whole twips here, as the list has always been laid out.
        m_y = Conversions::toInt32(y);
        if (m_rowsOnPage > 0 && needsNewPage(lineHeight, OptionTotalReserve)) {
            endPage(out);
            applyBoxStyle(out, box);
        }
        y = m_y;
        engine.setTextAlign(0);
        out.PrintTextBox(left, y, codeWidth, code);
        double bottom = engine.CurrentY();
        out.PrintTextBox(left + codeWidth, y, descriptionWidth, description);
        bottom = std::max(bottom, engine.CurrentY());
        // A description that wraps pushes the next option down instead of overlapping it.
        y = std::max(y + lineHeight, bottom);
        ++m_rowsOnPage;
    }
    return y;
}

} // namespace tavrel
