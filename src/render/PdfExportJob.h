#pragma once

#include <QString>

#include <functional>

namespace tavrel {

class CancelToken;
class PageEngine;

enum class PdfExportResult {
    Written,   // the file at the path is the new PDF
    Cancelled, // stopped by the user: nothing new on disk, an existing file untouched
};

// Writes the document to path by way of a temporary file in the same folder, which replaces the
// file at path only when the whole document is written: a cancelled or failed export leaves no
// file behind and an existing file as it was. Safe on any thread that does not change engine
// meanwhile. Throws RuntimeError 75 when the file cannot be written.
PdfExportResult exportPdfFile(const PageEngine &engine, const QString &path,
                              const CancelToken *cancel = nullptr,
                              const std::function<void(int page)> &progress = {});

// Whether a file at path could be replaced (an existing file's folder is writable); the export
// asks before it starts, so that the user hears of a file in use at once.
bool pdfPathReplaceable(const QString &path);

} // namespace tavrel
