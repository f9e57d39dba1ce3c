#pragma once

#include <QString>

#include <functional>

class QPrinter;

namespace tavrel {

class CancelToken;
class PageEngine;

// Optional hooks of a print run: progress hears each page number as it is sent; when cancel is
// raised the printer job is aborted after the page in hand (nothing is printed).
struct PrintProgress {
    std::function<void(int page)> progress;
    const CancelToken *cancel = nullptr;
};

// Replays the recorded document on a printer that is already set up (name, copies, output
// file); each page keeps its own orientation. Throws RuntimeError 57 when the printer refuses.
// Returns false when cancelled.
bool printPages(const PageEngine &engine, QPrinter &printer, const PrintProgress &hooks = {});

// Prints the document on the named printer (the system's default when the name is empty or not
// installed), with the engine's DocName as the job name.
bool printDocumentOn(const PageEngine &engine, const QString &printerName, int copies,
                     const PrintProgress &hooks = {});

} // namespace tavrel
