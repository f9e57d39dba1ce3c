#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

namespace tavrel {

// Windows-1252, the code page every job, SIF, order, template and group file is written in.
// Bytes 0x81, 0x8D, 0x8F, 0x90 and 0x9D have no character there and map to the control
// characters of the same number, as Windows itself does, so every byte round-trips.
QString fromWindows1252(const char *data, qsizetype size);
inline QString fromWindows1252(const QByteArray &bytes) {
    return fromWindows1252(bytes.constData(), bytes.size());
}

// Characters outside the code page become '?'.
QByteArray toWindows1252(QStringView text);

} // namespace tavrel
