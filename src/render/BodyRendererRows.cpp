// The item rows of the body pages: measuring and drawing the cells of one record, and the
// option and option-note lines under it.

#include "render/BodyRenderer.h"

#include "base/RuntimeError.h"
#include "render/BodyRendererLayout.h"
#include "render/HtmlFragments.h"
#include "render/OutputHelpers.h"
#include "render/PageEngine.h"
#include "render/ReportData.h"
#include "render/StatusIcons.h"
#include "spec/FieldCatalog.h"
#include "spec/FieldLengths.h"
#include "spec/SpecData.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace tavrel {

namespace {

// A "Taxable" cell shows the tax icon unless the item's value says no.
bool isTaxable(const QString &value) {
    const QString v = value.trimmed();
    return !v.isEmpty() && v != QLatin1String("0") &&
           v.compare(QLatin1String("N"), Qt::CaseInsensitive) != 0 &&
           v.compare(QLatin1String("No"), Qt::CaseInsensitive) != 0 &&
           v.compare(QLatin1String("False"), Qt::CaseInsensitive) != 0;
}

struct SubLineText {
    QString text;
    double left = 0;
    double width = 0;
    int align = 0;
};

} // namespace

void BodyRenderer::drawRecord(OutputHelpers &out, int record) {
    const SifItem &item = m_data.spec->item(record);
    const bool subtotal = item.isSubtotal();
    if (subtotal && m_rowsOnPage > 0)
        m_y += BodyLayout::SubtotalGap;
    if (!m_rowColumns.empty()) {
        const double rowHeight = measureRow(out, record, subtotal);
        breakIfNeeded(out, rowHeight);
        drawRow(out, record, subtotal, rowHeight);
        m_y += rowHeight;
        ++m_rowsOnPage;
    }
    if (!subtotal || m_data.showSubTotalOptions) {
        for (const SubLineBlock &block : m_blocks)
            drawSubLines(out, block, item);
    }
    if (!subtotal)
        drawItemRule(out.engine());
}

double BodyRenderer::measureRow(OutputHelpers &out, int record, bool subtotal) {
    double tallest = 0;
    for (std::size_t c = 0; c < m_rowColumns.size(); ++c)
        tallest = std::max(tallest, measureCell(out, c, record, subtotal));
    return tallest + 2 * BodyLayout::RowPadding;
}

double BodyRenderer::measureCell(OutputHelpers &out, std::size_t rowColumn, int record,
                                 bool subtotal) {
    const int columnIndex = m_rowColumns[rowColumn];
    const Column &column = m_columns[std::size_t(columnIndex)];
    const QString &text = m_cells[rowColumn][std::size_t(record - 1)];
    switch (column.kind) {
    case BodyColumnKind::Image:
        return pictureHeight(itemPicturePath(text), m_layout.other.imageSize);
    case BodyColumnKind::Complete:
        return pictureHeight(StatusIcons::resourcePath(StatusIcons::bitmapForValue(text)),
                             BodyLayout::iconSize());
    case BodyColumnKind::Taxable:
        return isTaxable(text)
                   ? pictureHeight(StatusIcons::taxResourcePath(), BodyLayout::iconSize())
                   : 0;
    default:
        break;
    }
    if (text.isEmpty())
        return 0;
    styleColumn(out, columnIndex, subtotal);
    PageEngine &engine = out.engine();
    engine.CalcParagraph(text, BodyLayout::textWidth(column.box.tWidth));
    return engine.TextHeight();
}

void BodyRenderer::drawRow(OutputHelpers &out, int record, bool subtotal, double rowHeight) {
    PageEngine &engine = out.engine();
    if (subtotal) {
        engine.setBrushStyle(BrushStyles::Solid);
        engine.setBrushColor(BodyLayout::SubtotalShade);
        engine.setPenStyle(PenStyles::Transparent);
        engine.DrawRectangle(m_spanLeft, m_y, m_spanRight, m_y + rowHeight);
        engine.setPenStyle(PenStyles::Solid);
        engine.setPenColor(BodyLayout::CaptionRuleColor);
        engine.setPenWidth(BodyLayout::SubtotalRuleWidth);
        engine.DrawLine(m_spanLeft, m_y, m_spanRight, m_y);
        engine.setPenWidth(0);
        m_styledColumn = -1;
    }
    const double top = m_y + BodyLayout::RowPadding;
    // RTF gets the row as one paragraph of text columns, each as wide as its field length.
    RtfPlacement rtf{2, 0};
    for (std::size_t c = 0; c < m_rowColumns.size(); ++c) {
        drawCell(out, c, record, top, subtotal, rtf);
        const CustomTemplate &box = m_columns[std::size_t(m_rowColumns[c])].box;
        const int length =
            m_data.fieldLengths
                ? m_data.fieldLengths->length(FieldCatalog::codeForCaption(box.tCaption))
                : 0;
        const int written = int(m_cells[c][std::size_t(record - 1)].size());
        rtf = {3, std::max(1, length - written) + 1};
    }
}

void BodyRenderer::drawCell(OutputHelpers &out, std::size_t rowColumn, int record, double top,
                            bool subtotal, RtfPlacement rtf) {
    const int columnIndex = m_rowColumns[rowColumn];
    const Column &column = m_columns[std::size_t(columnIndex)];
    const QString &text = m_cells[rowColumn][std::size_t(record - 1)];
    const double left = column.left + BodyLayout::CellInset;
    // An engine error in one cell (a damaged picture, say) leaves that cell empty; the row goes on.
    try {
        switch (column.kind) {
        case BodyColumnKind::Image:
            out.PrintPicture(itemPicturePath(text), left, top,
                             m_layout.other.imageSize.isEmpty() ? QStringLiteral("100%")
                                                                : m_layout.other.imageSize);
            return;
        case BodyColumnKind::Complete: {
            const int bitmap = StatusIcons::bitmapForValue(text);
            drawIcon(out, StatusIcons::resourcePath(bitmap), left, top);
            if (out.job().htmlExport)
                out.engine().ExportRaw(HtmlFragments::statusIcon(
                    StatusIcons::writeIconFile(bitmap, out.job().exportDirectory), left, top));
            return;
        }
        case BodyColumnKind::Taxable:
            if (!isTaxable(text))
                return;
            drawIcon(out, StatusIcons::taxResourcePath(), left, top);
            if (out.job().htmlExport && out.fragments()) {
                HtmlTextStyle style;
                style.fontSize = out.engine().FontSize();
                style.fontName = out.engine().FontName();
                out.engine().ExportRaw(out.fragments()->textParagraph(
                    HtmlTextSource::TextBox, style, left, top,
                    BodyLayout::textWidth(column.box.tWidth), QStringLiteral("Tax")));
            }
            return;
        default:
            break;
        }
        if (text.isEmpty())
            return;
        styleColumn(out, columnIndex, subtotal);
        out.engine().setTextAlign(engineAlignment(column.box.tTextAlign));
        out.PrintTextBox(left, top, BodyLayout::textWidth(column.box.tWidth), text, rtf);
    } catch (const RuntimeError &) {
        m_styledColumn = -1;
    }
}

void BodyRenderer::drawIcon(OutputHelpers &out, const QString &resource, double left, double top) {
    // Drawn straight on the engine: the icons have their own HTML element, not a picture's.
    out.engine().DrawPicture(resource, left, top, BodyLayout::iconSize(), BodyLayout::iconSize());
}

void BodyRenderer::drawSubLines(OutputHelpers &out, const SubLineBlock &block,
                                const SifItem &item) {
    const QStringList codes =
        BodyCellTexts::fieldLines(block.notes ? item.noteCodes : item.optionCodes);
    const QStringList descriptions =
        BodyCellTexts::fieldLines(block.notes ? item.noteDescriptions : item.optionDescriptions);
    const qsizetype count = std::max(codes.size(), descriptions.size());
    PageEngine &engine = out.engine();
    std::vector<SubLineText> texts;
    for (qsizetype line = 0; line < count; ++line) {
        const QString code = line < codes.size() ? codes.at(line) : QString();
        const QString description = line < descriptions.size() ? descriptions.at(line) : QString();
        double tallest = 0;
        for (int columnIndex : block.columns) {
            const Column &column = m_columns[std::size_t(columnIndex)];
            texts.clear();
            switch (BodyLayout::subLinePart(column.kind)) {
            case BodyLayout::SubLinePart::Code:
                texts.push_back({code, column.left, double(column.box.tWidth),
                                 engineAlignment(column.box.tTextAlign)});
                break;
            case BodyLayout::SubLinePart::Description:
                texts.push_back({description, column.left, double(column.box.tWidth),
                                 engineAlignment(column.box.tTextAlign)});
                break;
            case BodyLayout::SubLinePart::Both: {
                const BodyLayout::PairWidths widths =
                    BodyLayout::pairWidths(column.box, block.notes, m_layout.other);
                texts.push_back({code, column.left, widths.code, 0});
                texts.push_back({description, column.left + widths.code, widths.description, 0});
                break;
            }
            }
            styleColumn(out, columnIndex, false);
            for (const SubLineText &t : texts) {
                engine.CalcParagraph(t.text, BodyLayout::textWidth(t.width));
                tallest = std::max(tallest, engine.TextHeight());
            }
        }
        const double lineHeight = tallest + 2 * BodyLayout::SubLinePadding;
        breakIfNeeded(out, lineHeight);
        const double top = m_y + BodyLayout::SubLinePadding;
        for (int columnIndex : block.columns) {
            const Column &column = m_columns[std::size_t(columnIndex)];
            const BodyLayout::SubLinePart part = BodyLayout::subLinePart(column.kind);
            styleColumn(out, columnIndex, false);
            if (part != BodyLayout::SubLinePart::Description && !code.isEmpty()) {
                const double width =
                    part == BodyLayout::SubLinePart::Both
                        ? BodyLayout::pairWidths(column.box, block.notes, m_layout.other).code
                        : column.box.tWidth;
                engine.setTextAlign(part == BodyLayout::SubLinePart::Both
                                        ? 0
                                        : engineAlignment(column.box.tTextAlign));
                out.PrintTextBox(column.left + BodyLayout::CellInset, top,
                                 BodyLayout::textWidth(width), code, {2, 4});
            }
            if (part != BodyLayout::SubLinePart::Code && !description.isEmpty()) {
                double left = column.left;
                double width = column.box.tWidth;
                if (part == BodyLayout::SubLinePart::Both) {
                    const BodyLayout::PairWidths widths =
                        BodyLayout::pairWidths(column.box, block.notes, m_layout.other);
                    left += widths.code;
                    width = widths.description;
                }
                engine.setTextAlign(part == BodyLayout::SubLinePart::Both
                                        ? 0
                                        : engineAlignment(column.box.tTextAlign));
                out.PrintTextBox(left + BodyLayout::CellInset, top, BodyLayout::textWidth(width),
                                 description, {3, int(std::max<qsizetype>(1, 17 - code.size()))});
            }
        }
        m_y += lineHeight;
        ++m_rowsOnPage;
    }
}

void BodyRenderer::drawItemRule(PageEngine &engine) {
    if (m_columns.empty())
        return;
    engine.setPenStyle(PenStyles::Solid);
    engine.setPenColor(BodyLayout::ItemRuleColor);
    engine.setPenWidth(BodyLayout::ItemRuleWidth);
    engine.DrawLine(m_spanLeft, m_y, m_spanRight, m_y);
    engine.setPenWidth(0);
}

double BodyRenderer::pictureHeight(const QString &path, const QString &size) {
    if (path.isEmpty() || !QFileInfo(path).isFile())
        return 0;
    try {
        const PictureCache::Picture &picture = m_pictureSizes.load(path);
        return PictureCache::scaledExtent(size, picture.naturalSize.height());
    } catch (const RuntimeError &) {
        return 0;
    }
}

QString BodyRenderer::itemPicturePath(const QString &imageText) const {
    QString path = imageText.trimmed();
    if (path.isEmpty())
        return path;
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (QFileInfo(path).isRelative() && !m_data.sifPath.isEmpty())
        path = QFileInfo(m_data.sifPath).dir().filePath(path);
    return path;
}

} // namespace tavrel
