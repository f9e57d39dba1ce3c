#include "render/SpreadsheetTable.h"

#include "base/BasicFormat.h"
#include "base/Conversions.h"
#include "render/BodyRendererCells.h"
#include "render/BodyRendererLayout.h"
#include "render/ReportData.h"
#include "render/SummaryRendererFields.h"
#include "spec/FieldCatalog.h"
#include "spec/ItemFields.h"
#include "spec/OrderFileReader.h"
#include "spec/SpecData.h"
#include "templates/PrintDefinitions.h"
#include "templates/TemplateLayout.h"

#include <algorithm>

namespace tavrel {

namespace {

constexpr char16_t ChargePattern[] = u"$##0.00";

// What a spreadsheet column shows: the cell of a row column, or one part of the option or
// option-note lines.
enum class Source { Cell, LineCode, LineDescription, LineBoth };

struct SheetColumn {
    QString caption; // the caption row text, as the body prints it
    QString field;   // the template caption of the box (the item field)
    Source source = Source::Cell;
    bool notes = false; // a line column: option-note lines instead of option lines
    qint32 left = 0;
};

SheetCell textCell(const QString &text) {
    return {text, std::nullopt, {}, false};
}

// A cell of an item or subtotal row: the body's text, and its number where the field has one.
SheetCell itemCell(const QString &caption, const SifItem &item, bool subtotal) {
    SheetCell cell;
    cell.text = subtotal ? BodyCellTexts::subtotalCellText(caption, item)
                         : BodyCellTexts::cellText(caption, item);
    const ItemFieldRow *row = ItemFields::rowForCaption(caption);
    if (!row || row->hasText() || cell.text.isEmpty())
        return cell;
    if (row->kind == ItemFieldKind::Quantity && !subtotal) {
        cell.number = item.*row->number;
    } else if (row->cellPattern) {
        cell.number = subtotal ? row->subtotalValue(item) : row->numberOf(item);
        cell.pattern = QString::fromUtf16(row->cellPattern);
    }
    return cell;
}

std::vector<SheetColumn> sheetColumns(const TemplateLayout &body, const ReportData &data) {
    std::vector<SheetColumn> columns;
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &info = body.box(slot);
        if (!info.placed || info.container != Container::mainPort() || info.total || !info.body)
            continue;
        const CustomTemplate box = CustomTemplate::fromBox(info);
        const BodyColumnKind kind = bodyColumnKind(box.tCaption);
        const QString captionText = BodyLayout::columnCaption(box, data);
        if (!isSubLineKind(kind)) {
            columns.push_back({captionText, box.tCaption, Source::Cell, false, box.tLeft});
            continue;
        }
        const bool notes = !isOptionKind(kind);
        const std::vector<BodyLayout::CaptionPiece> pieces =
            BodyLayout::captionPieces(box, kind, body.other, captionText);
        switch (BodyLayout::subLinePart(kind)) {
        case BodyLayout::SubLinePart::Code:
            columns.push_back({captionText, box.tCaption, Source::LineCode, notes, box.tLeft});
            break;
        case BodyLayout::SubLinePart::Description:
            columns.push_back(
                {captionText, box.tCaption, Source::LineDescription, notes, box.tLeft});
            break;
        case BodyLayout::SubLinePart::Both:
            // The body splits the pair's caption over its code and description parts.
            if (pieces.size() == 2) {
                columns.push_back(
                    {pieces[0].text, box.tCaption, Source::LineCode, notes, box.tLeft});
                columns.push_back(
                    {pieces[1].text, box.tCaption, Source::LineDescription, notes, box.tLeft});
            } else {
                columns.push_back({captionText, box.tCaption, Source::LineBoth, notes, box.tLeft});
            }
            break;
        }
    }
    // Left to right, as the columns read on the page.
    std::stable_sort(columns.begin(), columns.end(),
                     [](const SheetColumn &a, const SheetColumn &b) { return a.left < b.left; });
    return columns;
}

// The option or note lines of an item as rows, with the line columns of their kind filled.
void addSubLines(const SheetRowSink &sink, const std::vector<SheetColumn> &columns,
                 const SifItem &item, bool notes) {
    bool shown = false;
    for (const SheetColumn &column : columns)
        shown = shown || (column.source != Source::Cell && column.notes == notes);
    if (!shown)
        return;
    const QStringList codes = listLines(notes ? item.noteCodes() : item.optionCodes());
    const QStringList descriptions =
        listLines(notes ? item.noteDescriptions() : item.optionDescriptions());
    const qsizetype count = std::max(codes.size(), descriptions.size());
    for (qsizetype i = 0; i < count; ++i) {
        const QString code = i < codes.size() ? codes.at(i) : QString();
        const QString description = i < descriptions.size() ? descriptions.at(i) : QString();
        SheetRow row;
        row.kind = SheetRowKind::SubLine;
        for (const SheetColumn &column : columns) {
            QString text;
            if (column.source != Source::Cell && column.notes == notes) {
                if (column.source == Source::LineCode)
                    text = code;
                else if (column.source == Source::LineDescription)
                    text = description;
                else
                    text = code + QLatin1Char(' ') + description;
            }
            row.cells.push_back(textCell(text));
        }
        sink(row);
    }
}

// The number behind a total box's value, with the pattern the body formats it with.
SheetCell totalCell(const BodyCellTexts::TotalAmount &total, const QString &text) {
    SheetCell cell;
    cell.text = text;
    // The discount percentages print with their sign inverted: the number carries it so.
    cell.number = total.inverted ? -total.value : total.value;
    cell.pattern = total.pattern;
    cell.signed_ = total.inverted;
    return cell;
}

void addTotals(const SheetRowSink &sink, const std::vector<SheetColumn> &columns,
               const TemplateLayout &body, const ReportData &data) {
    std::vector<CustomTemplate> boxes;
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &info = body.box(slot);
        if (info.placed && info.container == Container::mainPort() && info.total)
            boxes.push_back(CustomTemplate::fromBox(info));
    }
    // In the order the body prints them: top to bottom, left to right.
    std::stable_sort(boxes.begin(), boxes.end(),
                     [](const CustomTemplate &a, const CustomTemplate &b) {
                         return a.tTop != b.tTop ? a.tTop < b.tTop : a.tLeft < b.tLeft;
                     });
    const int width = std::max(2, int(columns.size()));
    for (const CustomTemplate &box : boxes) {
        SheetRow row;
        row.kind = SheetRowKind::Total;
        row.cells.assign(std::size_t(width), SheetCell{});
        if (box.tNotes) {
            row.cells[0] = textCell(box.tNotesName);
            sink(row);
            continue;
        }
        if (!data.spec)
            continue;
        if (box.tCaption == QLatin1String("Total Option / Description")) {
            // The list the body prints under its label: every option once, code and
            // description in the first two columns.
            if (box.tDisplayLabel) {
                row.cells[0] = textCell(FieldCatalog::totalLabel(box.tCaption));
                sink(row);
            }
            for (const auto &[code, description] : BodyCellTexts::distinctOptions(*data.spec)) {
                SheetRow option;
                option.kind = SheetRowKind::Total;
                option.cells.assign(std::size_t(width), SheetCell{});
                option.cells[0] = textCell(code);
                option.cells[1] = textCell(description);
                sink(option);
            }
            continue;
        }
        const std::optional<BodyCellTexts::TotalAmount> total =
            BodyCellTexts::totalAmount(box.tCaption, data.spec->header);
        const QString text = BodyCellTexts::totalText(box.tCaption, data.spec->header);
        if (!total || text.isEmpty())
            continue;
        const SheetCell value = totalCell(*total, text);
        const QString label = FieldCatalog::totalLabel(box.tCaption);
        const QString &under = total->summedColumn;
        std::size_t at = 1;
        for (std::size_t c = 0; c < columns.size(); ++c) {
            if (columns[c].source == Source::Cell && columns[c].field == under) {
                at = std::max<std::size_t>(1, c);
                break;
            }
        }
        row.cells[at] = value;
        row.cells[at - 1] = textCell(label);
        sink(row);
    }
}

} // namespace

namespace SpreadsheetTable {

SheetTable items(const TemplateLayout &body, const ReportData &data) {
    SheetTable table;
    table.name = QStringLiteral("Items");
    std::vector<SheetColumn> columns = sheetColumns(body, data);
    table.columnCount = int(columns.size());
    table.rowSource = [columns = std::move(columns), &body, &data](const SheetRowSink &sink) {
        SheetRow captions;
        captions.kind = SheetRowKind::Caption;
        for (const SheetColumn &column : columns)
            captions.cells.push_back(textCell(column.caption));
        sink(captions);

        const int records = data.spec ? data.spec->itemCount() : 0;
        SheetRow row;
        for (int record = 1; record <= records; ++record) {
            const SifItem &item = data.spec->item(record);
            const bool subtotal = item.isSubtotal();
            row.kind = subtotal ? SheetRowKind::Subtotal : SheetRowKind::Item;
            row.cells.clear();
            for (const SheetColumn &column : columns) {
                row.cells.push_back(column.source == Source::Cell
                                        ? itemCell(column.field, item, subtotal)
                                        : SheetCell{});
            }
            sink(row);
            if (!subtotal || data.showSubTotalOptions) {
                // Options before notes, as the body stacks them unless the template puts the
                // note columns higher; the spreadsheet keeps the plain order.
                addSubLines(sink, columns, item, false);
                addSubLines(sink, columns, item, true);
            }
        }
        addTotals(sink, columns, body, data);
    };
    return table;
}

SheetTable order(const ReportData &data) {
    SheetTable table;
    table.name = QStringLiteral("Order");
    table.columnCount = 2;
    const auto heading = [&table](const QString &text) {
        table.rows.push_back({SheetRowKind::Heading, {textCell(text)}});
    };
    heading(QStringLiteral("Order Header"));
    if (data.order) {
        OrderFieldLists lists;
        for (const QString &caption : FieldCatalog::orderHeaderCaptions()) {
            fillOrderField(lists, *data.order, data.cifPresent, 1, caption);
            QString label = lists.labels[1].trimmed();
            if (label.endsWith(QLatin1Char(':')))
                label.chop(1);
            const QString &value = lists.values[1];
            if (!value.isEmpty())
                table.rows.push_back(
                    {SheetRowKind::Field,
                     {textCell(label.isEmpty() ? caption : label), textCell(value)}});
            lists.labels[1].clear();
            lists.values[1].clear();
        }
    }
    heading(QStringLiteral("Additional Charges"));
    if (data.order) {
        for (const AdditionalCharge &charge : data.order->charges) {
            if (!SummaryFields::chargeIsPrinted(charge))
                continue;
            SheetCell amount = textCell(SummaryFields::chargeAmountText(charge));
            if (const std::optional<double> number =
                    Conversions::parseNumber(charge.amount.trimmed())) {
                amount.number = *number;
                amount.pattern = QString::fromUtf16(ChargePattern);
            }
            table.rows.push_back({SheetRowKind::Field, {textCell(charge.name), amount}});
        }
    }
    return table;
}

} // namespace SpreadsheetTable

} // namespace tavrel
