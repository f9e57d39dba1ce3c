#pragma once

#include <QtGlobal>

namespace tavrel {

// Colour numbers as templates and the page engine keep them: 24 bits with red in the low byte,
// then green, then blue.
using ColorNumber = quint32;
inline constexpr ColorNumber WhiteColor = 16777215;
inline constexpr ColorNumber BlackColor = 0;

} // namespace tavrel
