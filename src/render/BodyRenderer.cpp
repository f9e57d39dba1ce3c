#include "render/BodyRenderer.h"

#include "render/BodyRendererLayout.h"
#include "render/HtmlFragments.h"
#include "render/OutputHelpers.h"
#include "render/PageAnchors.h"
#include "render/PageEngine.h"
#include "render/ReportData.h"
#include "spec/FieldCatalog.h"
#include "spec/FieldLengths.h"
#include "spec/SpecData.h"

#include <algorithm>

namespace tavrel {

namespace {

// Removes the new-page listener however rendering ends.
class ListenerGuard {
public:
    ListenerGuard(PageEngine &engine, int id)
        : m_engine(engine)
        , m_id(id) {}
    ~ListenerGuard() { m_engine.removeNewPageListener(m_id); }
    ListenerGuard(const ListenerGuard &) = delete;
    ListenerGuard &operator=(const ListenerGuard &) = delete;

private:
    PageEngine &m_engine;
    int m_id;
};

} // namespace

BodyRenderer::BodyRenderer(TemplateLayout layout, const ReportData &data)
    : m_data(data)
    , m_layout(std::move(layout)) {}

BodyRenderer::~BodyRenderer() = default;

PageFieldFlags BodyRenderer::pageFields() const {
    return m_bands ? m_bands->pageFields() : findPageFieldFlags(m_layout);
}

void BodyRenderer::prepare(PageEngine &engine) {
    m_bands = std::make_unique<PageBands>(m_layout, m_data);
    m_columns.clear();
    m_rowColumns.clear();
    m_blocks.clear();
    m_totalBoxes.clear();
    const double left = engine.MarginLeft();
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &box = m_layout.box(slot);
        if (!box.placed || box.container != Container::mainPort())
            continue;
        if (box.total) {
            m_totalBoxes.push_back(CustomTemplate::fromBox(box));
        } else if (box.body) {
            Column column;
            column.box = CustomTemplate::fromBox(box);
            column.kind = bodyColumnKind(box.caption);
            column.left = left + box.left;
            column.captionText = BodyLayout::columnCaption(column.box, m_data);
            if (m_data.fieldLengths)
                column.fieldLength =
                    m_data.fieldLengths->length(FieldCatalog::codeForCaption(box.caption));
            m_columns.push_back(std::move(column));
        }
    }
    for (int i = 0; i < int(m_columns.size()); ++i) {
        const Column &column = m_columns[std::size_t(i)];
        if (!isSubLineKind(column.kind)) {
            m_rowColumns.push_back(i);
            continue;
        }
        const bool notes = !isOptionKind(column.kind);
        auto block = std::find_if(m_blocks.begin(), m_blocks.end(),
                                  [notes](const SubLineBlock &b) { return b.notes == notes; });
        if (block == m_blocks.end()) {
            m_blocks.push_back({notes, {}, column.box.tTop});
            block = std::prev(m_blocks.end());
        }
        block->columns.push_back(i);
        block->top = std::min(block->top, column.box.tTop);
    }
    // The block whose columns sit higher in the caption row comes first; options before notes.
    std::stable_sort(m_blocks.begin(), m_blocks.end(),
                     [](const SubLineBlock &a, const SubLineBlock &b) {
                         return a.top != b.top ? a.top < b.top : !a.notes && b.notes;
                     });
    m_spanLeft = m_spanRight = left;
    if (!m_columns.empty()) {
        m_spanLeft = engine.PageWidth();
        for (const Column &column : m_columns) {
            m_spanLeft = std::min(m_spanLeft, column.left);
            m_spanRight = std::max(m_spanRight, column.left + column.box.tWidth);
        }
    }
    std::stable_sort(m_totalBoxes.begin(), m_totalBoxes.end(),
                     [](const CustomTemplate &a, const CustomTemplate &b) {
                         return a.tTop != b.tTop ? a.tTop < b.tTop : a.tLeft < b.tLeft;
                     });
    m_groupStarts = m_data.spec ? subtotalGroupStarts(*m_data.spec) : QHash<int, QString>();
}

void BodyRenderer::loadRowCells(const SifItem &item) {
    m_rowCells.resize(m_rowColumns.size());
    for (std::size_t c = 0; c < m_rowColumns.size(); ++c) {
        const QString &caption = m_columns[std::size_t(m_rowColumns[c])].box.tCaption;
        m_rowCells[c] = item.isSubtotal() ? BodyCellTexts::subtotalCellText(caption, item)
                                          : BodyCellTexts::cellText(caption, item);
    }
}

void BodyRenderer::render(OutputHelpers &out) {
    PageEngine &engine = out.engine();
    prepare(engine);
    m_out = &out;
    m_diagnostics.clear();
    m_reportedPictures.clear();
    const ListenerGuard guard(engine, engine.addNewPageListener([this](int) {
        if (m_newPageInProgress && m_out)
            startPageTop(*m_out);
    }));
    m_firstPage = std::max(1, engine.PreviewPage());
    engine.Paragraph(QString());
    startPageTop(out);

    const int records = m_data.spec ? m_data.spec->itemCount() : 0;
    if (!m_rowColumns.empty() || !m_blocks.empty()) {
        // A cancelled job stops between rows; the pages done so far stay as they are.
        for (int record = 1; record <= records && !out.job().cancelRequested(); ++record)
            drawRecord(out, record);
    }
    if (!out.job().cancelRequested())
        drawTotals(out);

    if (!m_bands->isDeferred(PageBands::Band::Footer))
        m_bands->draw(out, PageBands::Band::Footer, engine.PreviewPage(), 0);
    m_pageCount = engine.PreviewPage() - m_firstPage + 1;
    m_out = nullptr;
    m_rowCells.clear();
}

void BodyRenderer::drawPageFieldBand(OutputHelpers &out, Band band, int pageNumber, int pageTotal) {
    if (!m_bands)
        m_bands = std::make_unique<PageBands>(m_layout, m_data);
    m_bands->draw(out, band == Band::Header ? PageBands::Band::Header : PageBands::Band::Footer,
                  pageNumber, pageTotal);
    if (out.job().htmlExport)
        out.engine().setExportNavBar(1,
                                     HtmlFragments::bottomNavigationBar(out.engine().CurrentY()));
}

bool BodyRenderer::needsNewPage(double height, double reserve) const {
    const PageEngine &engine = m_out->engine();
    return m_y > engine.PageHeight() - engine.MarginBottom() - height - reserve;
}

void BodyRenderer::breakIfNeeded(OutputHelpers &out, double height, double reserve) {
    // A row taller than the page is drawn on the page it starts, cut by the paper's edge: ending
    // a page that has no row yet would only add an empty one.
    if (m_rowsOnPage > 0 && needsNewPage(height, reserve))
        endPage(out);
}

void BodyRenderer::endPage(OutputHelpers &out) {
    PageEngine &engine = out.engine();
    if (!m_bands->isDeferred(PageBands::Band::Footer))
        m_bands->draw(out, PageBands::Band::Footer, engine.PreviewPage(), 0);
    m_newPageInProgress = true;
    engine.NewPage();
    m_newPageInProgress = false;
}

void BodyRenderer::startPageTop(OutputHelpers &out) {
    PageEngine &engine = out.engine();
    m_styledColumn = -1;
    m_rowsOnPage = 0;
    if (!m_bands->isDeferred(PageBands::Band::Header))
        m_bands->draw(out, PageBands::Band::Header, engine.PreviewPage(), 0);
    drawTemplateRectangles(engine, m_layout, m_bands->bodyOrigin(engine),
                           [this](const PrintRect &rect) { return !framesTotals(rect); });
    drawCaptionRow(out);
    m_y = m_captionBottom > 0 ? m_captionBottom + BodyLayout::FirstRowGap
                              : m_bands->bodyOrigin(engine).y() + NoCaptionRowGap;
    m_firstRowY = m_y;
}

bool BodyRenderer::framesTotals(const PrintRect &rect) const {
    std::vector<CustomTemplate> columns;
    columns.reserve(m_columns.size());
    for (const Column &column : m_columns)
        columns.push_back(column.box);
    return BodyLayout::framesTotals(rect, BodyLayout::totalsTop(m_totalBoxes),
                                    BodyLayout::captionRowBottom(columns));
}

void BodyRenderer::drawCaptionRow(OutputHelpers &out) {
    PageEngine &engine = out.engine();
    const QPointF origin = m_bands->bodyOrigin(engine);
    m_captionBottom = 0;
    const qint32 totalsTop = BodyLayout::totalsTop(m_totalBoxes);
    // The template's own lines above the totals belong to the caption row.
    for (int slot = 1; slot <= TemplateLayout::LineCapacity; ++slot) {
        const LineInfo &line = m_layout.line(slot);
        if (line.placed && line.container == Container::mainPort() && line.top < totalsTop)
            drawTemplateLine(out, CustomLine::fromLine(line), origin);
    }
    if (m_columns.empty())
        return;

    double bottom = 0;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const Column &column = m_columns[i];
        styleColumn(out, int(i), true);
        const double top = origin.y() + column.box.tTop;
        double height = column.box.tHeight;
        for (const BodyLayout::CaptionPiece &piece : BodyLayout::captionPieces(
                 column.box, column.kind, m_layout.other, column.captionText)) {
            const double x = column.left + piece.offset + BodyLayout::CellInset;
            const double width = BodyLayout::textWidth(piece.width);
            engine.setTextAlign(piece.alignLeft ? 0 : engineAlignment(column.box.tTextAlign));
            out.PrintTextBox(x, top, width, piece.text);
            height = std::max(height, engine.CurrentY() - top);
        }
        bottom = std::max(bottom, top + height);
    }
    m_styledColumn = -1;
    m_captionBottom = bottom;
    const double ruleY = bottom + BodyLayout::CaptionRuleGap;
    engine.setPenColor(BodyLayout::CaptionRuleColor);
    engine.setPenStyle(PenStyles::Solid);
    engine.setPenWidth(BodyLayout::CaptionRuleWidth);
    engine.DrawLine(m_spanLeft, ruleY, m_spanRight, ruleY);
    engine.setPenWidth(0);
    if (out.job().htmlExport)
        engine.ExportRaw(HtmlFragments::horizontalRule(m_spanLeft, ruleY));
}

void BodyRenderer::styleColumn(OutputHelpers &out, int column, bool bold) {
    // Measuring and drawing a row switch between the same few columns; set a font only when it
    // changes, the engine looks every new one up.
    const int key = bold ? -2 - column : column;
    if (m_styledColumn == key)
        return;
    applyBoxStyle(out, m_columns[std::size_t(column)].box);
    if (bold)
        out.engine().setFontBold(true);
    m_styledColumn = key;
}

} // namespace tavrel
