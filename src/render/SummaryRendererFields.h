#pragma once

#include "spec/OrderData.h"

#include <QString>

#include <vector>

namespace tavrel {

class SpecData;

// The order totals a summary page prints, gathered once per job.
struct SummaryTotals {
    double list = 0;
    double weight = 0;
    double volume = 0;
    double customer = 0;
    double dealer = 0;
    double margin = 0;
    double customerDiscount = 0;
    // Percentages as fractions (0.2 is twenty percent): the "%" of the format multiplies by 100.
    double customerPercent = 0;
    double dealerPercent = 0;
    double marginPercent = 0;
    // The sum of the additional charges, and whether an order file was found at all.
    double additionalCharges = 0;
    bool orderPresent = false;

    // The totals of the specification header with the charges of the order. The header keeps
    // its percentages times 100; they are turned back into fractions here so that the "%"
    // format does not multiply them twice.
    static SummaryTotals from(const SpecData &spec, double chargeSum, bool orderPresent);
};

// The label and value lists of a summary, one entry per box slot (indices 1 to 137).
struct SummaryFieldLists {
    static constexpr int Slots = 137;
    std::vector<QString> labels;
    std::vector<QString> values;
};

namespace SummaryFields {

// The inverted sign of the three total percentages, deliberately so: percentages are shown as
// discounts. A text holding "-" has its first character replaced by "+", any other non-empty text
// gets "-" in front ("%12.50000" becomes "-%12.50000").
QString invertedSign(const QString &formatted);

// Puts the label and value of a total caption into the lists at boxIndex, after sizing both
// lists to their 137 slots. Captions that are not totals change nothing. Throws RuntimeError 9
// for an index outside the slots.
void fill(SummaryFieldLists &lists, const SummaryTotals &totals, int boxIndex,
          const QString &caption);

// Whether a charge takes a line under "Additional Charges": its amount text holds one of the
// digits 1 to 9, so 0, 0.00 and an empty amount are left out.
bool chargeIsPrinted(const AdditionalCharge &charge);

// The amount of a charge line: "$##0.00", or the text as written when it is not a number.
QString chargeAmountText(const AdditionalCharge &charge);

// The sum of the charge amounts for the totals. Empty amounts are slots the order file never
// filled and count as nothing; any other amount must be a number (RuntimeError 13 otherwise).
double chargeSum(const OrderData &order);

// The option codes and descriptions of all product items, as one sorted list without repeated
// codes; each joined with carriage returns. Subtotal rows are left out: they repeat their items.
struct OptionLists {
    QString codes;
    QString descriptions;
};
OptionLists specificationOptions(const SpecData &spec);

} // namespace SummaryFields

} // namespace tavrel
