#pragma once

#include <QList>
#include <QStringView>

#include <vector>

namespace tavrel {

// For each line, whether it occurs as a piece of some line before it (an empty line occurs in
// any). Answered for all lines together from one sorted list of every line's suffixes, so that
// many distinct lines cost time in proportion to their total length, not its square.
std::vector<bool> containedInEarlierLines(const QList<QStringView> &lines);

} // namespace tavrel
