#pragma once

#include <QString>

namespace tavrel {

// Where the default "Print Templates" folder lives when a job file leaves "Template Directory"
// empty. A development build (or a program unpacked into one folder) keeps the folder beside its
// executable. An installed program's folder (/usr/bin) cannot hold it, so there the default is
// the user's data folder, "$XDG_DATA_HOME/tavrel", whose "Print Templates" is made on first use
// and filled with the installed Classic templates.
namespace DefaultTemplates {

// The folder that holds the default "Print Templates": executableFolder when it has a
// "Print Templates" folder, otherwise dataHome + "/tavrel" (dataHome empty: $XDG_DATA_HOME or
// ~/.local/share), where "Print Templates" is created and seeded when it does not exist yet.
// Falls back to executableFolder when no data folder is known.
QString templateRoot(const QString &executableFolder, const QString &dataHome = {});

// The installed Classic templates: <prefix>/share/tavrel/Print Templates for an executable in
// <prefix>/bin, else the first "tavrel/Print Templates" of $XDG_DATA_DIRS; empty when none.
QString installedTemplates(const QString &executableFolder);

} // namespace DefaultTemplates

} // namespace tavrel
