#pragma once

#include "base/RuntimeError.h"
#include "shell/Settings.h"

#include <QStringList>

#include <functional>

namespace tavrel {

class IniFile;

// The system's printers as start-up sees them.
struct PrinterList {
    QString current;       // the default printer's device name ("" when there is none)
    QStringList installed; // in the system's order

    // Qt's printer list (CUPS on Linux).
    static PrinterList fromSystem();
};

namespace SettingsStore {

// Section "User Preferences" with its defaults; nothing is reported.
UserPreferences readUserPreferences(const IniFile &ini);

// Section "Printer" (every key but the field code lengths and the print selection) with its
// defaults, skipping silently what fails; then the printer selection rule, setting *writeBack
// when the stored printer is not installed and the current one's name should be written back.
PrinterSettings readPrinterSettings(const IniFile &ini, const PrinterList &printers,
                                    bool *writeBack);

// The printer selection rule alone: the stored name when it is the current printer or an
// installed one, otherwise the current printer (and writeBack is set).
QString selectPrinter(const QString &stored, const PrinterList &printers, bool *writeBack);

} // namespace SettingsStore

} // namespace tavrel
