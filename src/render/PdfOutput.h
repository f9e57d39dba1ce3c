#pragma once

#include <QString>

#include <functional>

namespace tavrel {

class CancelToken;
class PageEngine;

// Writes the recorded document as a PDF: fonts embedded as subsets, text selectable, each page
// in its own size and orientation, the document title the engine's DocName. Throws RuntimeError
// 75 when the file cannot be written. progress, when given, hears each page number as it is
// written. The file is written beside the target and renamed over it once complete. When cancel
// is raised the writing stops after the page in hand and false is returned; the target is then
// as it was and nothing is left beside it.
bool writePdf(const PageEngine &engine, const QString &path,
              const std::function<void(int page)> &progress = {},
              const CancelToken *cancel = nullptr);

} // namespace tavrel
