#pragma once

#include <QString>
#include <QStringView>

namespace tavrel {

// Formats a number with a classic BASIC `Format` pattern, as the program's report fields need
// them ("##0.00", "##0.00000", "##0. 00000", "#.00", "$#,##0.00", "$##0.00", "%##0.00000"):
// - "0" is a digit that is always shown, "#" one that is shown only when significant; the
//   integer part shows all its digits however few placeholders the pattern has;
// - "," between integer placeholders groups the integer digits by thousands;
// - "%" multiplies the value by 100 and stands where it is in the pattern;
// - any other character (such as "$" or a blank) is copied where it stands;
// - the value is rounded half away from zero on its 15-digit decimal form, so 2.675 gives 2.68;
// - a negative value gets "-" in front of the whole text, "$" and "%" included ("-$1,234.50").
QString basicFormat(double value, QStringView pattern);

} // namespace tavrel
