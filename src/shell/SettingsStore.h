#pragma once

#include "base/RuntimeError.h"
#include "shell/Settings.h"

#include <QStringList>

#include <functional>

namespace tavrel {

// The system's printers as start-up sees them.
struct PrinterList {
    QString current;       // the default printer's device name ("" when there is none)
    QStringList installed; // in the system's order

    // Qt's printer list (CUPS on Linux).
    static PrinterList fromSystem();
};

namespace SettingsStore {

inline const QString &printerSection() {
    static const QString name = QStringLiteral("Printer");
    return name;
}
inline const QString &preferencesSection() {
    static const QString name = QStringLiteral("User Preferences");
    return name;
}

// Reads section "User Preferences" with its defaults; nothing is reported.
UserPreferences readUserPreferences(const QString &jobFile);

// Reads section "Printer" (every key but the field code lengths and the print selection) with
// its defaults, skipping silently what fails; then applies the printer selection rule, writing
// the current printer's name back when the stored one is not installed. A write-back that fails
// leaves the job file as it was and goes to writeFailed.
PrinterSettings
readPrinterSettings(const QString &jobFile, const PrinterList &printers,
                    const std::function<void(const RuntimeError &)> &writeFailed = {});

// The printer selection rule alone: the stored name when it is the current printer or an
// installed one, otherwise the current printer (and writeBack is set).
QString selectPrinter(const QString &stored, const PrinterList &printers, bool *writeBack);

} // namespace SettingsStore

} // namespace tavrel
