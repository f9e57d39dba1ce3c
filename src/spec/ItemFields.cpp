#include "spec/ItemFields.h"

#include <QHash>

namespace tavrel::ItemFields {

namespace {

template <typename Key> QHash<QString, const ItemFieldRow *> indexBy(Key key) {
    QHash<QString, const ItemFieldRow *> hash;
    for (const ItemFieldRow &row : rows) {
        if (!(row.*key).empty())
            hash.insert(QString::fromLatin1((row.*key).data(), qsizetype((row.*key).size())), &row);
    }
    return hash;
}

} // namespace

const ItemFieldRow *rowForCode(const QString &code) {
    static const QHash<QString, const ItemFieldRow *> byCode = indexBy(&ItemFieldRow::code);
    return byCode.value(code);
}

const ItemFieldRow *rowForCaption(const QString &caption) {
    static const QHash<QString, const ItemFieldRow *> byCaption = indexBy(&ItemFieldRow::caption);
    return byCaption.value(caption);
}

} // namespace tavrel::ItemFields
