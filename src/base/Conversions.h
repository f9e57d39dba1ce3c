#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace tavrel {

// The program's one way of turning text into numbers and doubles into integers, with the
// classic BASIC rules (US English number format).
namespace Conversions {

// A number as BASIC's numeric test accepts it: blanks around it, an optional sign or "$",
// digits with optional thousands commas, an optional decimal point and an optional exponent
// ("1,234.50", " -3 ", "2.5E3", ".5"); also "&H1F" and "&O17". Returns no value for anything
// else ("", "-", "ea", "nan", "inf"). Throws RuntimeError 6 (overflow) for a well-formed number
// beyond the double range, such as "1e400".
std::optional<double> parseNumber(QStringView text);

// Like parseNumber, but an empty or non-numeric text gives 0.
double numberOrZero(QStringView text);

// Rounds half to even, as BASIC's integer conversions do; throws RuntimeError 6 outside the
// target range.
qint16 toInt16(double value);
qint32 toInt32(double value);

// parseNumber + toInt16 / toInt32; throws RuntimeError 13 (type mismatch) for a non-number.
qint16 textToInt16(QStringView text);
qint32 textToInt32(QStringView text);

} // namespace Conversions

} // namespace tavrel
