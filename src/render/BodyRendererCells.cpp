#include "render/BodyRendererCells.h"

#include "base/BasicFormat.h"
#include "spec/SpecData.h"

#include <QHash>

#include <functional>

namespace tavrel {

namespace {

constexpr char16_t AmountPattern[] = u"##0.00";
constexpr char16_t PercentPattern[] = u"##0.00000";
// Kept as it always was, blank after the point included: the margin percentage prints so.
constexpr char16_t SpacedPercentPattern[] = u"##0. 00000";
constexpr char16_t WeightPattern[] = u"#.00";
constexpr char16_t MoneyPattern[] = u"$#,##0.00";
constexpr char16_t PercentTotalPattern[] = u"%##0.00000";

using TextField = QString SifItem::*;

const QHash<QString, TextField> &textFields() {
    static const QHash<QString, TextField> fields = {
        {QStringLiteral("Generic Code"), &SifItem::genericCode},
        {QStringLiteral("Extended Description"), &SifItem::extendedDescription},
        {QStringLiteral("Expanded Description"), &SifItem::expandedDescription},
        {QStringLiteral("Model Description"), &SifItem::modelDescription},
        {QStringLiteral("Part Classification"), &SifItem::partClassification},
        {QStringLiteral("Part Number"), &SifItem::partNumber},
        {QStringLiteral("Special Number"), &SifItem::specialNumber},
        {QStringLiteral("Report Note"), &SifItem::reportNote},
        {QStringLiteral("Sif Note"), &SifItem::sifNote},
        {QStringLiteral("Table of Contensts"), &SifItem::tableOfContents},
        {QStringLiteral("Enterprise Code"), &SifItem::enterpriseCode},
        {QStringLiteral("Enterprise Description"), &SifItem::enterpriseDescription},
        {QStringLiteral("Rec#"), &SifItem::recordNumber},
        {QStringLiteral("Part Description"), &SifItem::partDescription},
        {QStringLiteral("Mfg"), &SifItem::manufacturerCode},
        {QStringLiteral("Tag 1"), &SifItem::tag1},
        {QStringLiteral("Tag 2"), &SifItem::tag2},
        {QStringLiteral("Tag 3"), &SifItem::tag3},
        {QStringLiteral("Tag 4"), &SifItem::tag4},
        {QStringLiteral("Tag 5"), &SifItem::tag5},
        {QStringLiteral("Carton"), &SifItem::carton},
        {QStringLiteral("PZ"), &SifItem::pzText},
        {QStringLiteral("Complete"), &SifItem::cmText},
        {QStringLiteral("Taxable"), &SifItem::taText},
        {QStringLiteral("Image"), &SifItem::imText},
        {QStringLiteral("Option Code"), &SifItem::optionCodes},
        {QStringLiteral("Option Description"), &SifItem::optionDescriptions},
        {QStringLiteral("Option Note Code"), &SifItem::noteCodes},
        {QStringLiteral("Option Note Description"), &SifItem::noteDescriptions},
        {QStringLiteral("Option Code / Description"), &SifItem::optionCodesRunning},
        {QStringLiteral("Option Note Code / Description"), &SifItem::noteCodesRunning},
    };
    return fields;
}

struct Amount {
    std::function<double(const SifItem &)> value;
    const char16_t *pattern = AmountPattern;
    // What a subtotal row prints under the column: its own amount, or nothing.
    std::function<double(const SifItem &)> subtotalValue;
};

const QHash<QString, Amount> &amounts() {
    static const QHash<QString, Amount> table = [] {
        QHash<QString, Amount> t;
        const auto field = [](double SifItem::*member) {
            return [member](const SifItem &item) { return item.*member; };
        };
        t.insert(QStringLiteral("Volume"), {field(&SifItem::volume), AmountPattern, {}});
        t.insert(QStringLiteral("EXT Volume"),
                 {field(&SifItem::extendedVolume), AmountPattern, field(&SifItem::volume)});
        t.insert(QStringLiteral("Weight"), {field(&SifItem::weight), AmountPattern, {}});
        t.insert(QStringLiteral("EXT Weight"),
                 {field(&SifItem::extendedWeight), AmountPattern, field(&SifItem::weight)});
        t.insert(QStringLiteral("List$"), {field(&SifItem::listPrice), AmountPattern, {}});
        t.insert(QStringLiteral("EXT List$"),
                 {field(&SifItem::extendedList), AmountPattern, field(&SifItem::listPrice)});
        t.insert(QStringLiteral("Cust$"), {field(&SifItem::sellPrice), AmountPattern, {}});
        t.insert(QStringLiteral("EXT Cust$"),
                 {field(&SifItem::extendedSell), AmountPattern, field(&SifItem::sellPrice)});
        t.insert(QStringLiteral("Deal$"), {field(&SifItem::buyPrice), AmountPattern, {}});
        t.insert(QStringLiteral("EXT Deal$"),
                 {field(&SifItem::extendedBuy), AmountPattern, field(&SifItem::buyPrice)});
        t.insert(QStringLiteral("Cust Disc$"),
                 {[](const SifItem &i) { return i.listPrice - i.sellPrice; }, AmountPattern, {}});
        const auto discount = [](const SifItem &i) { return i.listPrice - i.sellPrice; };
        t.insert(QStringLiteral("EXT Cust Disc$"),
                 {[](const SifItem &i) { return i.extendedList - i.extendedSell; }, AmountPattern,
                  discount});
        t.insert(QStringLiteral("MG$"), {field(&SifItem::marginAmount), AmountPattern, {}});
        t.insert(QStringLiteral("EXT MG$"),
                 {[](const SifItem &i) { return i.marginAmount * i.quantity; }, AmountPattern,
                  [](const SifItem &i) { return i.sellPrice - i.buyPrice; }});
        t.insert(QStringLiteral("Cust%"), {field(&SifItem::customerPercent), PercentPattern, {}});
        t.insert(QStringLiteral("Deal%"), {field(&SifItem::dealerPercent), PercentPattern, {}});
        t.insert(QStringLiteral("MG%"), {field(&SifItem::marginPercent), SpacedPercentPattern, {}});
        return t;
    }();
    return table;
}

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
    if (const auto field = textFields().constFind(caption); field != textFields().constEnd())
        return item.*(field.value());
    if (caption == QLatin1String("Qty"))
        return quantityText(item.quantity);
    if (const auto amount = amounts().constFind(caption); amount != amounts().constEnd())
        return basicFormat(amount->value(item), amount->pattern);
    return {};
}

QString subtotalCellText(const QString &caption, const SifItem &item) {
    if (textFields().contains(caption))
        return cellText(caption, item);
    if (const auto amount = amounts().constFind(caption);
        amount != amounts().constEnd() && amount->subtotalValue)
        return basicFormat(amount->subtotalValue(item), amount->pattern);
    return {};
}

QStringList fieldLines(const QString &joined) {
    if (joined.isEmpty())
        return {};
    return joined.split(QLatin1Char('\r'));
}

QString invertedPercentText(double fraction) {
    const QString text = basicFormat(fraction, PercentTotalPattern).trimmed();
    if (fraction == 0)
        return text;
    if (text.contains(QLatin1Char('-')))
        return QLatin1Char('+') + text.mid(1);
    return QLatin1Char('-') + text;
}

QString totalText(const QString &caption, const SifHeader &header) {
    if (caption == QLatin1String("Total Weight"))
        return basicFormat(header.totalWeight, WeightPattern);
    if (caption == QLatin1String("Total Volume"))
        return basicFormat(header.totalVolume, WeightPattern);
    if (caption == QLatin1String("Total List$"))
        return basicFormat(header.totalList, MoneyPattern);
    if (caption == QLatin1String("Total Cust$"))
        return basicFormat(header.totalSell, MoneyPattern);
    if (caption == QLatin1String("Total Deal$"))
        return basicFormat(header.totalPurchase, MoneyPattern);
    if (caption == QLatin1String("Total Marg$"))
        return basicFormat(header.totalMarginAmount, MoneyPattern);
    if (caption == QLatin1String("Total Cust Disc$"))
        return basicFormat(header.totalDiscountAmount, MoneyPattern);
    // The header keeps percentages as percent figures; "%" in the pattern multiplies by 100.
    if (caption == QLatin1String("Total Cust%"))
        return invertedPercentText(header.totalCustomerDiscountPercent / 100);
    if (caption == QLatin1String("Total Deal%"))
        return invertedPercentText(header.totalDealerDiscountPercent / 100);
    if (caption == QLatin1String("Total Marg%"))
        return basicFormat(header.totalMarginPercent / 100, PercentTotalPattern);
    return {};
}

} // namespace BodyCellTexts

} // namespace tavrel
