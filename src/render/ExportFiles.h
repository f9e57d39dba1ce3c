#pragma once

#include <QString>
#include <QStringList>

namespace tavrel {

class PageEngine;

// The files an export run leaves behind. The engine only collects the raw fragments per page
// while the job draws; once the document and its page-field pass are finished these functions
// turn them into the page files (HTML) or the one document (RTF) named by the engine's
// ExportFile.
namespace ExportFiles {

// Writes one HTML file per page: the top bar (ExportNavBar 0) with its links filled, the page's
// fragments and the bottom bar remembered for that page. One page is written as the export file
// itself ("base.htm"), more as "base1.htm", "base2.htm", ... with "base.htm" deleted. Returns the
// written paths in page order. Throws RuntimeError when a file cannot be written.
QStringList writeHtml(const PageEngine &engine);

// Writes the raw text of all pages, in page order, as one RTF document to the export file, in
// the given default font. Throws RuntimeError when the file cannot be written.
void writeRtf(const PageEngine &engine, const QString &fontName, int fontSize);

// The page file an HTML export opens first: base + "1.htm" for several pages, else the export
// file ("base.htm") itself.
QString firstHtmlPage(const QString &exportFile, int pageCount);

} // namespace ExportFiles

} // namespace tavrel
