#pragma once

#include <QString>
#include <QStringList>

namespace tavrel {

// How the field length editor groups and names the field codes.
namespace FieldLengthCaptions {

enum class Group { Item, Page, Order };

Group groupOf(const QString &code);
// The caption shown beside a code: the field catalog's caption for item fields, otherwise the
// name of the page or order value the code stands for.
QString captionOf(const QString &code);
QString groupTitle(Group group);

} // namespace FieldLengthCaptions

} // namespace tavrel
