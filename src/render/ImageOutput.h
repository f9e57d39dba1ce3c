#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

namespace tavrel {

class PageEngine;

// One recorded page (1-based) as an image at the given resolution, on white paper.
QImage renderPageImage(const PageEngine &engine, int pageNumber, double dpi);

// Writes every page as DIR/page-001.png, page-002.png, ... and returns the paths. Throws
// RuntimeError 76 when the folder cannot be made and 75 when a file cannot be written.
QStringList writePngPages(const PageEngine &engine, const QString &folder, double dpi);

} // namespace tavrel
