#pragma once

#include <QPageLayout>

namespace tavrel {

struct Page;

// The paper and orientation of a recorded page, with no margins: the display list places
// everything from the paper's corner.
QPageLayout pageLayoutOf(const Page &page);

} // namespace tavrel
