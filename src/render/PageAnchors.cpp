#include "render/PageAnchors.h"

#include "spec/SpecData.h"

namespace tavrel {

QHash<int, QString> subtotalGroupStarts(const SpecData &spec) {
    QHash<int, QString> starts;
    int first = 1;
    for (int record = 1; record <= spec.itemCount(); ++record) {
        const SifItem &item = spec.item(record);
        if (!item.isSubtotal())
            continue;
        const QString title = item.partDescription().trimmed();
        starts.insert(first, title.isEmpty() ? item.partNumber() : title);
        first = record + 1;
    }
    return starts;
}

} // namespace tavrel
