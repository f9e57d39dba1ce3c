#pragma once

#include "shell/SettingsStore.h"

#include <QString>

namespace tavrel {

class PageEngine;

// The command-line tool prints without Qt's print support (which would bring the widget library
// with it): it asks CUPS's own command-line tools for the printers and hands them a PDF.
namespace CupsPrinting {

// The CUPS destinations and the default one, from lpstat; empty when CUPS answers nothing.
PrinterList printers();

// Writes the document as a PDF and submits it with lp to the named printer (the default when
// empty). Throws RuntimeError 57 when the job cannot be submitted.
void print(const PageEngine &engine, const QString &printerName, int copies);

} // namespace CupsPrinting

} // namespace tavrel
