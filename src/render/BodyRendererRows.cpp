// The item rows of the body pages: measuring and drawing the cells of one record, and the
// option and option-note lines under it.

#include "render/BodyRenderer.h"

#include "base/ErrorReport.h"
#include "base/RuntimeError.h"
#include "render/BodyRendererLayout.h"
#include "render/HtmlFragments.h"
#include "render/OutputHelpers.h"
#include "render/PageEngine.h"
#include "render/ReportData.h"
#include "render/StatusIcons.h"
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

} // namespace

void BodyRenderer::drawRecord(OutputHelpers &out, int record) {
    const SifItem &item = m_data.spec->item(record);
    const bool subtotal = item.isSubtotal();
    loadRowCells(item);
    if (subtotal && m_rowsOnPage > 0)
        m_y += BodyLayout::SubtotalGap;
    std::vector<std::vector<SubLine>> blockLines;
    double linesHeight = 0;
    if (!subtotal || m_data.showSubTotalOptions) {
        for (const SubLineBlock &block : m_blocks) {
            blockLines.push_back(measureSubLines(out, block, item));
            for (const SubLine &line : blockLines.back())
                linesHeight += line.height;
        }
    }
    if (!m_rowColumns.empty()) {
        const double rowHeight = measureRow(out, subtotal);
        // The row takes its lines along to the next page when they would not fit under it,
        // unless row and lines together are taller than a whole page.
        const double pageRoom = m_out->engine().PageHeight() - m_out->engine().MarginBottom() -
                                FooterReserve - m_firstRowY;
        breakIfNeeded(out,
                      rowHeight + linesHeight <= pageRoom ? rowHeight + linesHeight : rowHeight);
        if (const auto group = m_groupStarts.constFind(record); group != m_groupStarts.cend())
            out.engine().addAnchor(*group, 2, m_y);
        drawRow(out, subtotal, rowHeight);
        m_y += rowHeight;
        ++m_rowsOnPage;
    }
    for (std::size_t b = 0; b < blockLines.size(); ++b)
        drawSubLines(out, m_blocks[b], blockLines[b]);
    if (!subtotal)
        drawItemRule(out.engine());
}

double BodyRenderer::measureRow(OutputHelpers &out, bool subtotal) {
    double tallest = 0;
    for (std::size_t c = 0; c < m_rowColumns.size(); ++c)
        tallest = std::max(tallest, measureCell(out, c, subtotal));
    return tallest + 2 * BodyLayout::RowPadding;
}

double BodyRenderer::measureCell(OutputHelpers &out, std::size_t rowColumn, bool subtotal) {
    const int columnIndex = m_rowColumns[rowColumn];
    const Column &column = m_columns[std::size_t(columnIndex)];
    const QString &text = m_rowCells[rowColumn];
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

void BodyRenderer::drawRow(OutputHelpers &out, bool subtotal, double rowHeight) {
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
    if (out.job().rtfExport && out.fragments()) {
        // RTF gets the row as one paragraph of text columns, each as wide as its field length.
        // The row is written as a whole, so that it starts its own paragraph and keeps its
        // columns even where cells print nothing (empty text, pictures, icons).
        QString line;
        qsizetype end = 0; // just after the last text written: no padding trails the row
        for (std::size_t c = 0; c < m_rowColumns.size(); ++c) {
            const Column &column = m_columns[std::size_t(m_rowColumns[c])];
            const bool text = column.kind != BodyColumnKind::Image &&
                              column.kind != BodyColumnKind::Complete &&
                              column.kind != BodyColumnKind::Taxable;
            const QString &cell = text ? m_rowCells[c] : QString();
            line += cell;
            if (!cell.isEmpty())
                end = line.size();
            line += QString(std::max<qsizetype>(1, column.fieldLength - cell.size()), u' ');
        }
        line.truncate(end);
        // A leading blank would be taken as the end of "\par" and lost.
        const int blanks = line.startsWith(u' ') ? 1 : 0;
        out.engine().ExportRaw(out.fragments()->rtfText({2, blanks}, line));
    }
    for (std::size_t c = 0; c < m_rowColumns.size(); ++c)
        drawCell(out, c, top, subtotal, RtfPlacement{});
}

void BodyRenderer::drawCell(OutputHelpers &out, std::size_t rowColumn, double top, bool subtotal,
                            RtfPlacement rtf) {
    const int columnIndex = m_rowColumns[rowColumn];
    const Column &column = m_columns[std::size_t(columnIndex)];
    const QString &text = m_rowCells[rowColumn];
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
    } catch (const RuntimeError &error) {
        m_styledColumn = -1;
        // An item picture that cannot be loaded would otherwise be missing without a word; it
        // is reported once, by its name (the error's description carries it).
        if (column.kind == BodyColumnKind::Image &&
            !m_reportedPictures.contains(error.description())) {
            m_reportedPictures.insert(error.description());
            m_diagnostics.push_back({QStringLiteral("Custom Preview."), error});
        }
    }
}

void BodyRenderer::drawIcon(OutputHelpers &out, const QString &resource, double left, double top) {
    // Drawn straight on the engine: the icons have their own HTML element, not a picture's.
    out.engine().DrawPicture(resource, left, top, BodyLayout::iconSize(), BodyLayout::iconSize());
}

std::vector<BodyRenderer::SubLine>
BodyRenderer::measureSubLines(OutputHelpers &out, const SubLineBlock &block, const SifItem &item) {
    const QStringList codes = listLines(block.notes ? item.noteCodes() : item.optionCodes());
    const QStringList descriptions =
        listLines(block.notes ? item.noteDescriptions() : item.optionDescriptions());
    const qsizetype count = std::max(codes.size(), descriptions.size());
    PageEngine &engine = out.engine();
    std::vector<SubLine> lines;
    lines.reserve(std::size_t(count));
    for (qsizetype i = 0; i < count; ++i) {
        SubLine line;
        line.code = i < codes.size() ? codes.at(i) : QString();
        line.description = i < descriptions.size() ? descriptions.at(i) : QString();
        double tallest = 0;
        for (int columnIndex : block.columns) {
            styleColumn(out, columnIndex, false);
            for (const SubLineText &text : subLineTexts(block, columnIndex, line)) {
                if (text.text.isEmpty())
                    continue;
                engine.CalcParagraph(text.text, BodyLayout::textWidth(text.width));
                tallest = std::max(tallest, engine.TextHeight());
            }
        }
        line.height = tallest + 2 * BodyLayout::SubLinePadding;
        lines.push_back(std::move(line));
    }
    return lines;
}

std::vector<BodyRenderer::SubLineText>
BodyRenderer::subLineTexts(const SubLineBlock &block, int columnIndex, const SubLine &line) const {
    const Column &column = m_columns[std::size_t(columnIndex)];
    const int align = engineAlignment(column.box.tTextAlign);
    switch (BodyLayout::subLinePart(column.kind)) {
    case BodyLayout::SubLinePart::Code:
        return {{line.code, column.left, double(column.box.tWidth), align, {2, 4}}};
    case BodyLayout::SubLinePart::Description:
        return {{line.description, column.left, double(column.box.tWidth), align, {2, 4}}};
    case BodyLayout::SubLinePart::Both:
        break;
    }
    const BodyLayout::PairWidths widths =
        BodyLayout::pairWidths(column.box, block.notes, m_layout.other);
    // RTF: the description follows the code on the same line, as if in a 16-character column.
    const int gap = int(std::max<qsizetype>(1, 16 - line.code.size())) + 1;
    return {{line.code, column.left, widths.code, 0, {2, 4}},
            {line.description, column.left + widths.code, widths.description, 0, {3, gap}}};
}

void BodyRenderer::drawSubLines(OutputHelpers &out, const SubLineBlock &block,
                                const std::vector<SubLine> &lines) {
    PageEngine &engine = out.engine();
    for (const SubLine &line : lines) {
        breakIfNeeded(out, line.height);
        const double top = m_y + BodyLayout::SubLinePadding;
        for (int columnIndex : block.columns) {
            styleColumn(out, columnIndex, false);
            for (const SubLineText &text : subLineTexts(block, columnIndex, line)) {
                if (text.text.isEmpty())
                    continue;
                engine.setTextAlign(text.align);
                out.PrintTextBox(text.left + BodyLayout::CellInset, top,
                                 BodyLayout::textWidth(text.width), text.text, text.rtf);
            }
        }
        m_y += line.height;
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
