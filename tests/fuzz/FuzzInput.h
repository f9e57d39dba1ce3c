#pragma once

// What the fuzz targets share: the input as a QByteArray and, for readers that only take a path,
// a scratch file holding it.

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QString>

#include <cstddef>
#include <cstdint>

namespace tavrel::fuzz {

inline QByteArray inputBytes(const std::uint8_t *data, std::size_t size) {
    return QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
}

// One scratch file per process (fuzzing jobs may run side by side), rewritten for every input.
inline const QString &scratchPath(const char *extension) {
    static const QString path = QDir::tempPath() + QStringLiteral("/tavrel-fuzz-%1%2")
                                                       .arg(QCoreApplication::applicationPid())
                                                       .arg(QLatin1String(extension));
    return path;
}

inline bool writeScratch(const QString &path, const QByteArray &bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    return file.write(bytes) == bytes.size();
}

} // namespace tavrel::fuzz
