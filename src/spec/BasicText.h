#pragma once

#include <QString>
#include <QStringView>

namespace tavrel {

// BASIC's Trim: removes blanks (spaces) at both ends, nothing else.
inline QString trimBlanks(QStringView text) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && text[begin] == QLatin1Char(' '))
        ++begin;
    while (end > begin && text[end - 1] == QLatin1Char(' '))
        --end;
    return text.mid(begin, end - begin).toString();
}

} // namespace tavrel
