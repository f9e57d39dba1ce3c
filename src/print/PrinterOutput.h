#pragma once

#include <QString>

class QPrinter;

namespace tavrel {

class PageEngine;

// Replays the recorded document on a printer that is already set up (name, copies, output
// file); each page keeps its own orientation. Throws RuntimeError 57 when the printer refuses.
void printPages(const PageEngine &engine, QPrinter &printer);

// Prints the document on the named printer (the system's default when the name is empty or not
// installed), with the engine's DocName as the job name.
void printDocumentOn(const PageEngine &engine, const QString &printerName, int copies);

} // namespace tavrel
