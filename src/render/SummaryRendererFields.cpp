#include "render/SummaryRendererFields.h"

#include "base/BasicFormat.h"
#include "base/Conversions.h"
#include "base/RuntimeError.h"
#include "spec/BasicText.h"
#include "spec/FieldCatalog.h"
#include "spec/OrderFileReader.h"
#include "spec/SpecData.h"
#include "spec/Totals.h"

#include <QStringList>

#include <algorithm>
#include <optional>

namespace tavrel {

namespace {

const QString Money = QStringLiteral("$#,##0.00");
const QString Measure = QStringLiteral("#.00");
const QString Percent = QStringLiteral("%##0.00000");

struct TotalValue {
    QString format;
    bool invertSign = false;
    double value = 0;
};

// The value and format of a total caption, or nothing for any other caption. "Total Option /
// Description" and "Total Additional Charges" are handled by the caller.
std::optional<TotalValue> totalValue(const SummaryTotals &t, const QString &caption) {
    const auto is = [&caption](const char *name) { return caption == QLatin1String(name); };
    if (is("Total List$"))
        return TotalValue{Money, false, t.list};
    if (is("Total Weight"))
        return TotalValue{Measure, false, t.weight};
    if (is("Total Volume"))
        return TotalValue{Measure, false, t.volume};
    if (is("Total Cust$"))
        return TotalValue{Money, false, t.customer};
    if (is("Total Cust%"))
        return TotalValue{Percent, true, t.customerPercent};
    if (is("Total Deal$"))
        return TotalValue{Money, false, t.dealer};
    if (is("Total Deal%"))
        return TotalValue{Percent, true, t.dealerPercent};
    if (is("Total Marg$"))
        return TotalValue{Money, false, t.margin};
    if (is("Total Marg%"))
        return TotalValue{Percent, true, t.marginPercent};
    if (is("Total Cust Disc$"))
        return TotalValue{Money, false, t.customerDiscount};
    if (is("Total Cust$ Order"))
        return TotalValue{Money, false, Totals::checked(t.additionalCharges + t.customer)};
    if (is("Total Deal$ Order"))
        return TotalValue{Money, false, Totals::checked(t.additionalCharges + t.dealer)};
    return std::nullopt;
}

} // namespace

SummaryTotals SummaryTotals::from(const SpecData &spec, double chargeSum, bool orderPresent) {
    const SifHeader &h = spec.header;
    SummaryTotals t;
    t.list = h.totalList;
    t.weight = h.totalWeight;
    t.volume = h.totalVolume;
    t.customer = h.totalSell;
    t.dealer = h.totalPurchase;
    t.margin = h.totalMarginAmount;
    t.customerDiscount = h.totalDiscountAmount;
    t.customerPercent = h.totalCustomerDiscountPercent / 100;
    t.dealerPercent = h.totalDealerDiscountPercent / 100;
    t.marginPercent = h.totalMarginPercent / 100;
    t.additionalCharges = chargeSum;
    t.orderPresent = orderPresent;
    return t;
}

namespace SummaryFields {

QString invertedSign(const QString &formatted) {
    if (formatted.isEmpty())
        return formatted;
    if (formatted.contains(QLatin1Char('-')))
        return QLatin1Char('+') + formatted.mid(1);
    return QLatin1Char('-') + formatted;
}

void fill(SummaryFieldLists &lists, const SummaryTotals &totals, int boxIndex,
          const QString &caption) {
    lists.labels.resize(SummaryFieldLists::Slots + 1);
    lists.values.resize(SummaryFieldLists::Slots + 1);
    if (boxIndex < 1 || boxIndex > SummaryFieldLists::Slots)
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    QString &label = lists.labels[std::size_t(boxIndex)];
    QString &value = lists.values[std::size_t(boxIndex)];

    if (caption == QLatin1String("Total Option / Description")) {
        // Its value is the option list, which the page prints beside the label.
        label = FieldCatalog::totalLabel(caption);
        value.clear();
        return;
    }
    if (caption == QLatin1String("Total Additional Charges")) {
        if (totals.orderPresent && totals.additionalCharges > 0) {
            label = FieldCatalog::totalLabel(caption);
            value = trimBlanks(basicFormat(totals.additionalCharges, Money));
        } else {
            label.clear();
            value.clear();
        }
        return;
    }
    const std::optional<TotalValue> total = totalValue(totals, caption);
    if (!total)
        return;
    label = FieldCatalog::totalLabel(caption);
    value = trimBlanks(basicFormat(total->value, total->format));
    if (total->invertSign)
        value = invertedSign(value);
}

bool chargeIsPrinted(const AdditionalCharge &charge) {
    for (const QChar c : charge.amount) {
        if (c >= QLatin1Char('1') && c <= QLatin1Char('9'))
            return true;
    }
    return false;
}

QString chargeAmountText(const AdditionalCharge &charge) {
    const std::optional<double> amount = Conversions::parseNumber(trimBlanks(charge.amount));
    if (!amount)
        return charge.amount;
    return basicFormat(*amount, u"$##0.00");
}

double chargeSum(const OrderData &order) {
    OrderData filled;
    for (const AdditionalCharge &charge : order.charges) {
        if (!trimBlanks(charge.amount).isEmpty())
            filled.charges.push_back(charge);
    }
    return sumOfAdditionalCharges(filled);
}

OptionLists specificationOptions(const SpecData &spec) {
    const QChar carriageReturn(13);
    QStringList codes;
    QStringList descriptions;
    for (int i = 1; i <= spec.itemCount(); ++i) {
        const SifItem &item = spec.item(i);
        if (item.isSubtotal() || item.optionCodes().isEmpty())
            continue;
        // Each item's lists are made the same length first, so that a description never slides
        // onto the code of another item.
        const QStringList itemCodes = item.optionCodes().split(carriageReturn);
        QStringList itemDescriptions = item.optionDescriptions().split(carriageReturn);
        itemDescriptions.resize(std::max(itemDescriptions.size(), itemCodes.size()));
        codes += itemCodes;
        descriptions += itemDescriptions.mid(0, itemCodes.size());
    }
    OptionLists lists;
    if (codes.isEmpty())
        return lists;
    lists.codes = codes.join(carriageReturn);
    lists.descriptions = descriptions.join(carriageReturn);
    Totals::cleanOptionGroup(lists.codes, lists.descriptions);
    return lists;
}

} // namespace SummaryFields

} // namespace tavrel
