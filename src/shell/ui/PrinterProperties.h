#pragma once

#include <QString>

namespace tavrel {

class Prompter;
struct AppContext;
struct PrinterList;

// The main window's Printer Properties: shows the printer, copies and orientation the session
// prints with, and keeps what the user chose: the printer and copies in the job file (where the
// parent application and the unattended print read them too) and in the settings, the
// orientation for the rest of the session (every later preview, print and PDF). Confirms the
// choice in the status bar. Returns false when the user cancelled; throws RuntimeError when the
// job file cannot be written (nothing is changed then).
bool choosePrinterProperties(AppContext &context, Prompter &prompter, const PrinterList &printers);

// "Printer: PDF, 2 copies, landscape" as the status bar confirms it.
QString printerChoiceText(const AppContext &context);
// "7 page(s) sent to the printer. Printer: PDF, 2 copies, landscape" after a print.
QString printedText(int pages, const AppContext &context);

} // namespace tavrel
