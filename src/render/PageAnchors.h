#pragma once

#include <QHash>
#include <QString>

#include <vector>

namespace tavrel {

// A place in the laid-out document a reader may want to jump to: where a section or a group of
// rows starts. The PDF writer turns them into the document's outline (bookmarks).
struct PageAnchor {
    QString title;
    int level = 1; // 1: a section; 2: a part of the section before it
    int page = 0;  // 1-based
    double y = 0;  // twips from the top of the page
};

// What the PDF's outline and document information are made of, recorded as the report is laid
// out. Kept by the engine beside its pages; a new document starts with none.
struct DocumentNavigation {
    std::vector<PageAnchor> anchors;
    QString author; // the company the report is from
    QString subject;

    void clear() { *this = {}; }
};

class SpecData;

// Where the outline puts each "SUBTOTAL" group: the record of its first row (the first record
// after the previous subtotal, or the subtotal itself when the group has no items) with the
// subtotal's description as the title ("SUBTOTAL" when it has none).
QHash<int, QString> subtotalGroupStarts(const SpecData &spec);

} // namespace tavrel
