#include "spec/Totals.h"

#include "base/RuntimeError.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tavrel {
namespace Totals {

namespace {

const QString carriageReturn = QStringLiteral("\r");

bool isBlankEntry(const QString &entry) {
    return std::all_of(entry.cbegin(), entry.cend(), [](QChar c) { return c == QLatin1Char(' '); });
}

// The classic recursive quicksort with the pivot in the middle; equal codes end up in no
// particular order. The larger part is handled in the loop so that the stack stays shallow;
// the parts are disjoint, so the result is the same as recursing into both.
void quickSort(QStringList &codes, QStringList &descriptions, qsizetype low, qsizetype high) {
    while (low < high) {
        qsizetype i = low;
        qsizetype j = high;
        const QString pivot = codes[(low + high) / 2];
        while (i <= j) {
            while (codes[i] < pivot)
                ++i;
            while (pivot < codes[j])
                --j;
            if (i <= j) {
                codes.swapItemsAt(i, j);
                descriptions.swapItemsAt(i, j);
                ++i;
                --j;
            }
        }
        if (j - low < high - i) {
            if (low < j)
                quickSort(codes, descriptions, low, j);
            low = i;
        } else {
            if (i < high)
                quickSort(codes, descriptions, i, high);
            high = j;
        }
    }
}

void appendEntry(QString &list, const QString &text) {
    if (!list.isEmpty())
        list += carriageReturn;
    list += text;
}

} // namespace

double checked(double value) {
    if (!std::isfinite(value))
        throw RuntimeError(ErrorNumber::Overflow);
    return value;
}

void cleanOptionGroup(QString &codes, QString &descriptions) {
    QStringList codeList = listLines(codes);
    QStringList descriptionList = listLines(descriptions);
    // An item whose option and description lines differ in number leaves the lists of unequal
    // length; the shorter one is padded with blank entries so no option or description is lost.
    const qsizetype count = std::max(codeList.size(), descriptionList.size());
    codeList.resize(count);
    descriptionList.resize(count);
    for (qsizetype i = 0; i < count; ++i) {
        if (isBlankEntry(codeList[i]))
            codeList[i] = QStringLiteral(" ");
        if (isBlankEntry(descriptionList[i]))
            descriptionList[i] = QStringLiteral(" ");
    }
    quickSort(codeList, descriptionList, 0, count - 1);

    QString cleanCodes;
    QString cleanDescriptions;
    const QString *lastKept = nullptr;
    for (qsizetype i = 0; i < count; ++i) {
        if (lastKept && codeList[i] == *lastKept)
            continue;
        lastKept = &codeList[i];
        // Empty entries are left out of the joined text; a single blank is not empty.
        if (!codeList[i].isEmpty())
            appendEntry(cleanCodes, codeList[i]);
        if (!descriptionList[i].isEmpty())
            appendEntry(cleanDescriptions, descriptionList[i]);
    }
    codes = std::move(cleanCodes);
    descriptions = std::move(cleanDescriptions);
}

void computeSubtotalOptions(SpecData &data) {
    const int count = data.itemCount();
    // Only a "SUBTOTAL" row before the last item opens a second group; without one nothing is
    // written and a lone closing row keeps its own option lines.
    bool groupsOpened = false;
    for (int i = 1; i < count && !groupsOpened; ++i)
        groupsOpened = data.item(i).isSubtotal();
    if (!groupsOpened)
        return;

    std::vector<std::pair<QString, QString>> groups(1); // codes, descriptions
    for (int i = 1; i <= count; ++i) {
        const SifItem &item = data.item(i);
        if (!item.isSubtotal()) {
            appendEntry(groups.back().first, item.optionCodes());
            appendEntry(groups.back().second, item.optionDescriptions());
        } else if (i != count) {
            groups.emplace_back();
        }
    }
    for (auto &[codes, descriptions] : groups)
        cleanOptionGroup(codes, descriptions);

    // The k-th subtotal row closes group k; items after the last row form a group no row
    // receives.
    std::size_t group = 0;
    for (int i = 1; i <= count; ++i) {
        SifItem &item = data.item(i);
        if (!item.isSubtotal())
            continue;
        item.replaceOptions(groups[group].first, groups[group].second);
        ++group;
    }
}

void computeExtensions(SpecData &data) {
    const int count = data.itemCount();
    for (int i = 1; i <= count; ++i) {
        SifItem &item = data.item(i);
        if (item.isSubtotal())
            continue;
        item.extendedList = checked(item.quantity * item.listPrice);
        item.extendedSell = checked(item.quantity * item.sellPrice);
        item.extendedBuy = checked(item.quantity * item.buyPrice);
        item.extendedSellCopy = item.extendedSell;
        item.extendedWeight = checked(item.quantity * item.weight);
        item.extendedVolume = checked(item.volume * item.quantity);
        item.extendedDd = checked(item.quantity * item.ddAmount);
    }
}

void computeHeaderTotals(SifHeader &header) {
    const double list = header.totalList;
    const double sell = header.totalSell;
    const double purchase = header.totalPurchase;
    header.totalMarginAmount = checked(sell - purchase);
    header.totalDiscountAmount = checked(list - sell);
    header.totalMarginPercent = sell <= 0 ? 100.0 : checked((sell - purchase) / sell * 100);
    // Without a list total the two discount percentages keep their earlier values.
    if (list > 0) {
        header.totalCustomerDiscountPercent = checked((list - sell) / list * 100);
        header.totalDealerDiscountPercent = checked((list - purchase) / list * 100);
    }
}

void computeAll(SpecData &data) {
    computeSubtotalOptions(data);
    computeExtensions(data);
    computeHeaderTotals(data.header);
}

} // namespace Totals
} // namespace tavrel
