#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace tavrel {

// Text files of the program: Windows-1252, lines ended by CR LF, LF or a lone CR.
namespace TextFile {

// Reads the whole file; throws RuntimeError 53 (file not found) or 75 (path/file access).
QByteArray readBytes(const QString &path);

// Splits decoded text into lines; a last line without its end is kept, an empty tail is not.
QStringList splitLines(const QString &text);

// readBytes + decode + splitLines.
QStringList readLines(const QString &path);

// Writes the whole file through a temporary file that is renamed over the target only once
// everything was written, so a failed write leaves the old file as it was. Throws
// RuntimeError 61 (disk full), 70 (permission denied), 75 or 76 with the system's reason.
void writeAtomically(const QString &path, const QByteArray &bytes);

// Encodes lines as Windows-1252, each ended by CR LF.
QByteArray encodeCrLf(const QStringList &lines);

} // namespace TextFile

} // namespace tavrel
