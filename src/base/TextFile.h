#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>

class QIODevice;

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

// The same for a writer that streams into the device (a PDF, say). write may throw; the
// temporary file is then discarded and the target left as it was. A write error of the device
// throws RuntimeError 61.
void writeAtomically(const QString &path, const std::function<void(QIODevice &device)> &write);

// Deletes what an atomic save of path that was killed before its rename left beside it: files
// named as the save names its temporary file (path + "." + six letters or digits) that nobody
// has written to for a minute, so a save still running in another process keeps its file.
// Called after every successful atomic save; failures are ignored.
void removeLeftovers(const QString &path);

// Encodes lines as Windows-1252, each ended by CR LF.
QByteArray encodeCrLf(const QStringList &lines);

} // namespace TextFile

} // namespace tavrel
