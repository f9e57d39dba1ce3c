#include "templates/BoxInfo.h"

#include "spec/FieldCatalog.h"

namespace tavrel {

QString Container::normalized(const QString &name) {
    if (name == header() || name == footer())
        return name;
    return mainPort();
}

QString BoxInfo::headerTextForCaption(const QString &caption) {
    if (FieldCatalog::hasNoHeaderText(caption))
        return {};
    return FieldCatalog::codeForCaption(caption);
}

} // namespace tavrel
