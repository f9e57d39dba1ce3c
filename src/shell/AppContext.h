#pragma once

#include "shell/JobFile.h"
#include "shell/JobPaths.h"
#include "shell/Settings.h"
#include "spec/FieldLengths.h"
#include "spec/OrderData.h"
#include "spec/SpecData.h"

#include <QString>

#include <array>
#include <optional>

namespace tavrel {

// Everything process-wide that start-up fills and the windows and print jobs read: created once
// in main() and passed by reference. Tests build their own.
struct AppContext {
    // The job file as read at start-up; every setting is read from and written through it.
    JobFile job;
    JobPaths paths;
    QString runMode;
    PrinterSettings printer;
    // The orientation chosen in Printer Properties for the rest of the session: true landscape,
    // false portrait; none: each job takes it from its templates.
    std::optional<bool> landscapeOverride;
    UserPreferences preferences;
    Margins margins; // twips
    UsablePageArea pageArea;
    bool cifPresent = false;
    bool cifVersion4 = false;
    SpecData spec;
    OrderData order;
    FieldLengths fieldLengths = FieldLengths::builtIn();
    // One text per field box slot, 0 to 137.
    std::array<QString, 138> stringTable;
};

} // namespace tavrel
