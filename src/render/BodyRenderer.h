#pragma once

#include "render/BodyRendererCells.h"
#include "render/ExportFragmentWriter.h"
#include "render/PageBands.h"
#include "render/PictureCache.h"
#include "render/SectionRenderer.h"
#include "templates/PrintDefinitions.h"
#include "templates/TemplateLayout.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace tavrel {

class PageEngine;
struct ReportData;
struct SifItem;

// The body pages (`modCustomPreview`): one row per specification record in the columns of a
// custom template, the option and option-note lines under each item, "SUBTOTAL" records as
// subtotal rows, and the totals section after the last record; the template's header band,
// column caption row and footer band on every page.
//
// Page flow: a row (or a line under it) that would end lower than 1000 twips above the bottom
// margin starts a new page; rows are never split. The renderer listens to the engine's new-page
// notification while it ends a page itself, so the next page gets its header and caption row
// however it is output (PDF, printer, preview).
class BodyRenderer : public SectionRenderer {
public:
    // Space kept above the bottom margin for the footer, below every row and line.
    static constexpr double FooterReserve = 1000;
    // The same for the lines of the "Total Option / Description" box.
    static constexpr double OptionTotalReserve = 600;
    // Where rows start on a page without a caption row: below the body start.
    static constexpr double NoCaptionRowGap = 50;

    // Lays out the custom template the job has read. data must outlive the renderer.
    BodyRenderer(TemplateLayout layout, const ReportData &data);
    ~BodyRenderer() override;

    void render(OutputHelpers &out) override;
    int pageCount() const override { return m_pageCount; }
    // Item pictures that could not be loaded, once each, under "Custom Preview.".
    std::vector<RenderDiagnostic> diagnostics() const override { return m_diagnostics; }
    PageFieldFlags pageFields() const override;
    void drawPageFieldBand(OutputHelpers &out, Band band, int pageNumber, int pageTotal) override;

private:
    // A box of the template's body: a column of the item rows, or one whose lines go under them.
    struct Column {
        CustomTemplate box;
        BodyColumnKind kind = BodyColumnKind::Text;
        double left = 0; // page x of the column
        QString captionText;
        int fieldLength = 0; // characters the column takes in RTF text columns
    };
    // The option lines or the option-note lines of a record, and the columns that show them.
    struct SubLineBlock {
        bool notes = false;
        std::vector<int> columns; // indices into m_columns
        qint32 top = 0;           // the highest of their caption tops, which orders the blocks
    };

    void prepare(PageEngine &engine);
    // The cell texts of one record, into m_rowCells.
    void loadRowCells(const SifItem &item);
    void startPageTop(OutputHelpers &out);
    void drawCaptionRow(OutputHelpers &out);
    // Whether a rectangle goes with the totals section (see BodyLayout::framesTotals).
    bool framesTotals(const PrintRect &rect) const;
    void endPage(OutputHelpers &out);
    bool needsNewPage(double height, double reserve) const;
    void breakIfNeeded(OutputHelpers &out, double height, double reserve = FooterReserve);

    // Rows (BodyRendererRows.cpp).
    void drawRecord(OutputHelpers &out, int record);
    double measureRow(OutputHelpers &out, bool subtotal);
    void drawRow(OutputHelpers &out, bool subtotal, double rowHeight);
    double measureCell(OutputHelpers &out, std::size_t rowColumn, bool subtotal);
    void drawCell(OutputHelpers &out, std::size_t rowColumn, double top, bool subtotal,
                  RtfPlacement rtf);
    void drawIcon(OutputHelpers &out, const QString &resource, double left, double top);
    // One option or option-note line: its two texts and the height it takes.
    struct SubLine {
        QString code;
        QString description;
        double height = 0;
    };
    // Where a column draws its part of a sub-line.
    struct SubLineText {
        QString text;
        double left = 0;
        double width = 0;
        int align = 0;
        RtfPlacement rtf;
    };
    std::vector<SubLine> measureSubLines(OutputHelpers &out, const SubLineBlock &block,
                                         const SifItem &item);
    std::vector<SubLineText> subLineTexts(const SubLineBlock &block, int columnIndex,
                                          const SubLine &line) const;
    void drawSubLines(OutputHelpers &out, const SubLineBlock &block,
                      const std::vector<SubLine> &lines);
    void drawItemRule(PageEngine &engine);
    double pictureHeight(const QString &path, const QString &size);
    QString itemPicturePath(const QString &imageText) const;
    void styleColumn(OutputHelpers &out, int column, bool bold);

    // Totals (BodyRendererTotals.cpp).
    void drawTotals(OutputHelpers &out);
    double drawOptionTotal(OutputHelpers &out, const CustomTemplate &box, double top);
    QString totalBoxText(const CustomTemplate &box) const;

    const ReportData &m_data;
    TemplateLayout m_layout;
    std::unique_ptr<PageBands> m_bands;

    std::vector<Column> m_columns;      // every body box, slot order
    std::vector<int> m_rowColumns;      // the ones drawn in the item row
    std::vector<SubLineBlock> m_blocks; // stacked under the row, top-down
    std::vector<CustomTemplate> m_totalBoxes;
    // The cell texts of the record being laid out, one per entry of m_rowColumns. They are
    // made a record at a time, so the first page does not wait for every record's texts.
    std::vector<QString> m_rowCells;
    // The first record of each subtotal group and its outline title (PageAnchors.h).
    QHash<int, QString> m_groupStarts;
    PictureCache m_pictureSizes;
    QSet<QString> m_reportedPictures; // item pictures that could not be loaded, reported once
    std::vector<RenderDiagnostic> m_diagnostics;

    OutputHelpers *m_out = nullptr; // set while rendering, for the new-page notification
    bool m_newPageInProgress = false;
    int m_firstPage = 0;
    int m_pageCount = 0;
    int m_rowsOnPage = 0;
    double m_y = 0;
    double m_firstRowY = 0;     // where rows start on a page
    double m_captionBottom = 0; // page y below the caption row, 0 when there is none
    double m_spanLeft = 0;      // page x of the leftmost and rightmost column edges
    double m_spanRight = 0;
    int m_styledColumn = -1; // the column whose font the engine holds, -1 when unknown
};

} // namespace tavrel
