#include "render/BodyRendererCells.h"

#include "base/BasicFormat.h"
#include "spec/ItemFields.h"
#include "spec/SpecData.h"

#include <QHash>

#include <algorithm>

namespace tavrel {

namespace {

constexpr char16_t WeightPattern[] = u"#.00";
constexpr char16_t MoneyPattern[] = u"$#,##0.00";
constexpr char16_t PercentTotalPattern[] = u"%##0.00000";

// A quantity as BASIC prints a Double: no trailing zeros, no exponent for ordinary counts.
QString quantityText(double quantity) {
    return QString::number(quantity, 'g', 15);
}

} // namespace

BodyColumnKind bodyColumnKind(const QString &caption) {
    static const QHash<QString, BodyColumnKind> kinds = {
        {QStringLiteral("Image"), BodyColumnKind::Image},
        {QStringLiteral("Complete"), BodyColumnKind::Complete},
        {QStringLiteral("Taxable"), BodyColumnKind::Taxable},
        {QStringLiteral("Option Code / Description"), BodyColumnKind::Options},
        {QStringLiteral("Option Code"), BodyColumnKind::OptionCodes},
        {QStringLiteral("Option Description"), BodyColumnKind::OptionDescriptions},
        {QStringLiteral("Option Note Code / Description"), BodyColumnKind::Notes},
        {QStringLiteral("Option Note Code"), BodyColumnKind::NoteCodes},
        {QStringLiteral("Option Note Description"), BodyColumnKind::NoteDescriptions},
    };
    return kinds.value(caption, BodyColumnKind::Text);
}

bool isSubLineKind(BodyColumnKind kind) {
    return kind == BodyColumnKind::Options || kind == BodyColumnKind::OptionCodes ||
           kind == BodyColumnKind::OptionDescriptions || kind == BodyColumnKind::Notes ||
           kind == BodyColumnKind::NoteCodes || kind == BodyColumnKind::NoteDescriptions;
}

bool isOptionKind(BodyColumnKind kind) {
    return kind == BodyColumnKind::Options || kind == BodyColumnKind::OptionCodes ||
           kind == BodyColumnKind::OptionDescriptions;
}

namespace BodyCellTexts {

QString cellText(const QString &caption, const SifItem &item) {
    const ItemFieldRow *row = ItemFields::rowForCaption(caption);
    if (!row)
        return {};
    if (row->hasText())
        return row->textOf(item);
    if (row->kind == ItemFieldKind::Quantity)
        return quantityText(item.*row->number);
    if (row->cellPattern)
        return basicFormat(row->numberOf(item), row->cellPattern);
    return {};
}

QString subtotalCellText(const QString &caption, const SifItem &item) {
    const ItemFieldRow *row = ItemFields::rowForCaption(caption);
    if (!row)
        return {};
    if (row->hasText())
        return row->textOf(item);
    if (row->subtotalValue && row->cellPattern)
        return basicFormat(row->subtotalValue(item), row->cellPattern);
    return {};
}

QString invertedPercentText(double fraction) {
    const QString text = basicFormat(fraction, PercentTotalPattern).trimmed();
    if (fraction == 0)
        return text;
    if (text.contains(QLatin1Char('-')))
        return QLatin1Char('+') + text.mid(1);
    return QLatin1Char('-') + text;
}

std::optional<TotalAmount> totalAmount(const QString &caption, const SifHeader &header) {
    struct Total {
        const char *caption;
        double SifHeader::*value;
        const char16_t *pattern;
        bool percent; // the header keeps percent figures; "%" in the pattern multiplies by 100
        bool inverted;
        const char *summedColumn;
    };
    static const Total totals[] = {
        {"Total Weight", &SifHeader::totalWeight, WeightPattern, false, false, "EXT Weight"},
        {"Total Volume", &SifHeader::totalVolume, WeightPattern, false, false, "EXT Volume"},
        {"Total List$", &SifHeader::totalList, MoneyPattern, false, false, "EXT List$"},
        {"Total Cust$", &SifHeader::totalSell, MoneyPattern, false, false, "EXT Cust$"},
        {"Total Deal$", &SifHeader::totalPurchase, MoneyPattern, false, false, "EXT Deal$"},
        {"Total Marg$", &SifHeader::totalMarginAmount, MoneyPattern, false, false, "EXT MG$"},
        {"Total Cust Disc$", &SifHeader::totalDiscountAmount, MoneyPattern, false, false,
         "EXT Cust Disc$"},
        {"Total Cust%", &SifHeader::totalCustomerDiscountPercent, PercentTotalPattern, true, true,
         "Cust%"},
        {"Total Deal%", &SifHeader::totalDealerDiscountPercent, PercentTotalPattern, true, true,
         "Deal%"},
        {"Total Marg%", &SifHeader::totalMarginPercent, PercentTotalPattern, true, false, "MG%"},
    };
    for (const Total &total : totals) {
        if (caption == QLatin1String(total.caption)) {
            const double value = header.*total.value;
            return TotalAmount{total.percent ? value / 100 : value,
                               QString::fromUtf16(total.pattern), total.inverted,
                               QLatin1String(total.summedColumn)};
        }
    }
    return std::nullopt;
}

QString totalText(const QString &caption, const SifHeader &header) {
    const std::optional<TotalAmount> total = totalAmount(caption, header);
    if (!total)
        return {};
    return total->inverted ? invertedPercentText(total->value)
                           : basicFormat(total->value, total->pattern);
}

std::vector<std::pair<QString, QString>> distinctOptions(const SpecData &spec) {
    std::vector<std::pair<QString, QString>> options;
    for (int record = 1; record <= spec.itemCount(); ++record) {
        const SifItem &item = spec.item(record);
        if (item.isSubtotal())
            continue;
        const QStringList codes = listLines(item.optionCodes());
        const QStringList descriptions = listLines(item.optionDescriptions());
        const qsizetype count = std::max(codes.size(), descriptions.size());
        for (qsizetype i = 0; i < count; ++i) {
            QString code = i < codes.size() ? codes.at(i).trimmed() : QString();
            QString description =
                i < descriptions.size() ? descriptions.at(i).trimmed() : QString();
            if (!code.isEmpty() || !description.isEmpty())
                options.emplace_back(std::move(code), std::move(description));
        }
    }
    std::stable_sort(options.begin(), options.end(),
                     [](const auto &a, const auto &b) { return a.first < b.first; });
    options.erase(std::unique(options.begin(), options.end(),
                              [](const auto &a, const auto &b) { return a.first == b.first; }),
                  options.end());
    return options;
}

} // namespace BodyCellTexts

} // namespace tavrel
