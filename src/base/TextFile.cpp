#include "base/TextFile.h"

#include "base/CheckedWrites.h"
#include "base/RuntimeError.h"
#include "base/Windows1252.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

namespace tavrel {
namespace TextFile {

QByteArray readBytes(const QString &path) {
    const QFileInfo info(path);
    if (path.isEmpty())
        throw RuntimeError(ErrorNumber::BadFileName);
    if (!info.exists())
        throw RuntimeError(ErrorNumber::FileNotFound);
    if (info.isDir())
        throw RuntimeError(ErrorNumber::PathFileAccessError);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw RuntimeError(file.error() == QFileDevice::PermissionsError
                               ? ErrorNumber::PermissionDenied
                               : ErrorNumber::PathFileAccessError);
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        throw RuntimeError(ErrorNumber::DeviceIoError, file.errorString());
    return bytes;
}

QStringList splitLines(const QString &text) {
    QStringList lines;
    const qsizetype size = text.size();
    const QChar *data = text.constData();
    qsizetype start = 0;
    for (qsizetype i = 0; i < size; ++i) {
        const char16_t c = data[i].unicode();
        if (c != u'\n' && c != u'\r')
            continue;
        lines << text.mid(start, i - start);
        if (c == u'\r' && i + 1 < size && data[i + 1] == u'\n')
            ++i;
        start = i + 1;
    }
    if (start < size)
        lines << text.mid(start);
    return lines;
}

QStringList readLines(const QString &path) {
    return splitLines(fromWindows1252(readBytes(path)));
}

void writeAtomically(const QString &path, const QByteArray &bytes) {
    // A short write shows as disk full below.
    writeAtomically(path, [&bytes](QIODevice &device) { device.write(bytes); });
}

void writeAtomically(const QString &path, const std::function<void(QIODevice &device)> &write) {
    const QFileInfo info(path);
    if (path.isEmpty())
        throw RuntimeError(ErrorNumber::BadFileName);
    if (info.isDir())
        throw RuntimeError(ErrorNumber::PathFileAccessError,
                           QStringLiteral("Path/File access error: %1 is a folder").arg(path));
    if (!info.absoluteDir().exists())
        throw RuntimeError(ErrorNumber::PathNotFound);
    QSaveFile file(path);
    // Unbuffered, so that a short write (a full disk, a file-size limit) shows at once in the
    // byte count instead of vanishing in a buffer that commit() flushes without complaint.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        throw RuntimeError(file.error() == QFileDevice::PermissionsError
                               ? ErrorNumber::PermissionDenied
                               : ErrorNumber::PathFileAccessError,
                           file.errorString());
    }
    CheckedWrites device(file);
    try {
        write(device);
    } catch (...) {
        file.cancelWriting();
        throw;
    }
    if (device.shortWrite() || file.error() != QFileDevice::NoError) {
        const QString reason = file.errorString();
        file.cancelWriting();
        throw RuntimeError(ErrorNumber::DiskFull, QStringLiteral("Disk full (%1)").arg(reason));
    }
    if (!file.commit())
        throw RuntimeError(ErrorNumber::DeviceIoError, file.errorString());
    removeLeftovers(path);
}

void removeLeftovers(const QString &path) {
    const QFileInfo target(path);
    const QString name = target.fileName();
    QDir folder = target.absoluteDir();
    // The save's temporary file is the target's name, a dot and six letters or digits.
    const QRegularExpression own(QLatin1Char('^') + QRegularExpression::escape(name) +
                                 QStringLiteral("\\.[A-Za-z0-9]{6}$"));
    const QDateTime quiet = QDateTime::currentDateTimeUtc().addSecs(-60);
    const QStringList candidates =
        folder.entryList({name + QStringLiteral(".??????")}, QDir::Files | QDir::Hidden);
    for (const QString &candidate : candidates) {
        if (!own.match(candidate).hasMatch())
            continue;
        const QFileInfo leftover(folder.filePath(candidate));
        if (leftover.lastModified().toUTC() < quiet)
            QFile::remove(leftover.filePath());
    }
}

QByteArray encodeCrLf(const QStringList &lines) {
    QByteArray bytes;
    qsizetype total = 0;
    for (const QString &line : lines)
        total += line.size() + 2;
    bytes.reserve(total);
    for (const QString &line : lines) {
        bytes += toWindows1252(line);
        bytes += "\r\n";
    }
    return bytes;
}

} // namespace TextFile
} // namespace tavrel
