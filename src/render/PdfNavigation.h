#pragma once

#include <QString>

#include <functional>

class QIODevice;

namespace tavrel {

struct DocumentNavigation;

// What Qt's PDF writer leaves out, added with qpdf after it: the outline (bookmarks) from the
// engine's anchors, page labels that number the pages as the report does (1 to the page count,
// cover, body and summary together), and the author and subject of the document information.
// The pages, their text and the title Qt wrote stay as they are.
namespace PdfNavigation {

// Runs writePdf into a temporary file beside path (named as the program's atomic saves name
// theirs, so that one a killed run left is cleared by the next save), then writes that PDF with
// the navigation added into device. Throws RuntimeError 75 when qpdf cannot read what Qt wrote;
// what writePdf throws passes through.
void write(QIODevice &device, const QString &path, const DocumentNavigation &navigation,
           const std::function<void(QIODevice &pdf)> &writePdf);

} // namespace PdfNavigation

} // namespace tavrel
