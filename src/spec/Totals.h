#pragma once

#include "spec/SpecData.h"

#include <QString>

namespace tavrel {

// The computations that complete the specification after reading. Prices are used as the
// parent application wrote them: nothing here rounds.
namespace Totals {

// Arithmetic on amounts has no guard of its own, but a result beyond the double range is the
// program's overflow error rather than an infinity: returns value or throws RuntimeError 6.
double checked(double value);

// Gives each "SUBTOTAL" row the sorted, de-duplicated options of the items of its group.
void computeSubtotalOptions(SpecData &data);

// Extended list, sell, buy, sell copy, weight, volume and DD amount of every product item;
// subtotal rows keep their own values.
void computeExtensions(SpecData &data);

// Margin, discount and the three percentages from TL, TS and TP.
void computeHeaderTotals(SifHeader &header);

// The three steps above, in that order.
void computeAll(SpecData &data);

// One group's option lists (carriage-return separated, codes and descriptions in parallel):
// blank entries become a single blank, pairs are sorted by code and repeated codes dropped.
// Both lists are rewritten in place.
void cleanOptionGroup(QString &codes, QString &descriptions);

} // namespace Totals

} // namespace tavrel
