#pragma once

#include "templates/ReportSelection.h"

#include <QString>

#include <array>
#include <functional>

namespace tavrel {

// The main window's checks before it previews, prints or saves the selection as default. Each
// returns the message to show (exclamation icon), or an empty text when the command may go on.
// fileExists is the file test, so tests can decide what exists.
namespace MenuChecks {

using FileExists = std::function<bool(const QString &)>;

QString beforePreview(const ReportSelection &selection, const FileExists &fileExists);
QString beforePrint(const ReportSelection &selection, const FileExists &fileExists);
// The printable-row checks of "save as default"; the missing-file questions follow separately.
QString beforeSaveAsDefault(const ReportSelection &selection);
// The question asked, with OK and Cancel, for a chosen file that does not exist ("Connot" is
// the required spelling).
QString cannotSaveQuestion(const QString &fileName);

} // namespace MenuChecks

} // namespace tavrel
