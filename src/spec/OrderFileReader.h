#pragma once

#include "spec/OrderData.h"

#include <QString>
#include <QStringList>

namespace tavrel {

class Prompter;

// True when a line of the order file, blanks trimmed, is exactly "[CIF V4]". Throws
// RuntimeError when the file cannot be read; the caller reports "CheckVersion Sub Procedure.".
bool isCifVersion4(const QString &cifPath);

// One pass over the order file for the additional charges and the shipping notes. A file that
// cannot be read leaves the order as it was; a line that fails is skipped.
void readAdditionalCharges(const QString &cifPath, bool version4, OrderData &order);
void readAdditionalChargeLines(const QStringList &lines, bool version4, OrderData &order);

// One pass over the order file for the header values and the sales and dealer lists. A file
// that cannot be read leaves the order as it was; a line that fails is skipped.
void readOrderHeader(const QString &cifPath, OrderData &order);
void readOrderHeaderLines(const QStringList &lines, OrderData &order);

// Start-up's handling of the order file: order is reset; when a file exists at cifPath it is
// marked present, its version is tested (a failure is reported as "CheckVersion Sub
// Procedure." and counts as not version 4), then charges and header are read.
void loadOrderFile(const QString &cifPath, OrderData &order, Prompter &prompter);

// The sum of the charge amounts, each trimmed and converted; throws RuntimeError 13 (type
// mismatch) for an amount that is not a number, an empty one included, and 6 on overflow.
double sumOfAdditionalCharges(const OrderData &order);

// Puts the label and value of an order field box into the two lists at boxIndex (1 to 137),
// after sizing both lists to their 137 slots. Captions that are not order fields change
// nothing. Throws RuntimeError 9 for an index outside the slots.
void fillOrderField(OrderFieldLists &lists, const OrderData &order, bool cifPresent, int boxIndex,
                    const QString &caption);

// "20240315" becomes "03-15-2024"; a text containing "-" is returned unchanged.
QString formatRequestedDate(const QString &date);

} // namespace tavrel
