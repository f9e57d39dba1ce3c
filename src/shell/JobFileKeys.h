#pragma once

#include <QString>

// The section and key names of the job file. Only the job model and start-up's reading rules
// use them: everything else asks the model.
namespace tavrel::JobFileKeys {

inline QString printer() {
    return QStringLiteral("Printer");
}
inline QString userPreferences() {
    return QStringLiteral("User Preferences");
}

inline QString tempPrintDocument() {
    return QStringLiteral("TempPrintDocument");
}
inline QString activeDocument() {
    return QStringLiteral("ActiveDocument");
}
inline QString templateDirectory() {
    return QStringLiteral("Template Directory");
}
inline QString function() {
    return QStringLiteral("Function");
}
inline QString printerDeviceName() {
    return QStringLiteral("PrinterDeviceName");
}
inline QString printCopies() {
    return QStringLiteral("PrintCopies");
}
inline QString pageLayout() {
    return QStringLiteral("PageLayout");
}

} // namespace tavrel::JobFileKeys
