#include "shell/SettingsStore.h"

#include <QPrinterInfo>

namespace tavrel {

// Kept apart from the reading rules so that only the programs that print need Qt's printing.
PrinterList PrinterList::fromSystem() {
    PrinterList list;
    list.current = QPrinterInfo::defaultPrinterName();
    list.installed = QPrinterInfo::availablePrinterNames();
    return list;
}

} // namespace tavrel
