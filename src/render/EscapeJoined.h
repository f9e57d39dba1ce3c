#pragma once

#include <QString>
#include <QStringView>

namespace tavrel {

// Escapes each piece of a text that Tavrel joined with its own separator (" <BR> ", " \line "),
// keeping the separators as markup. escape maps a piece of data to its escaped form.
template <typename Escape>
QString escapeJoined(QStringView joined, QStringView separator, const Escape &escape) {
    if (separator.isEmpty())
        return escape(joined);
    QString out;
    out.reserve(joined.size());
    qsizetype from = 0;
    for (qsizetype at = joined.indexOf(separator); at >= 0; at = joined.indexOf(separator, from)) {
        out += escape(joined.mid(from, at - from));
        out += separator;
        from = at + separator.size();
    }
    out += escape(joined.mid(from));
    return out;
}

} // namespace tavrel
