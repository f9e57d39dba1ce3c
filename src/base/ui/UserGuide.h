#pragma once

#include "base/ui/CommandTable.h"

#include <QString>
#include <QStringList>

namespace tavrel {

class Prompter;

// The user guide, opened by F1 (Help > User Guide) in every window.
namespace UserGuide {

// The command every window's table holds: "mnuHelpTopic", F1.
CommandTable::Command command(std::function<void()> open);

// Where the guide's first page may be, in the order they are tried, for a program running from
// `programFolder`: the installed copy (<prefix>/share/doc/tavrel/guide beside <prefix>/bin),
// the HTML copy a build makes (<build>/doc/guide), and the Markdown pages of the source tree
// (docs/guide, three folders up from <build>/<preset>/bin).
QStringList candidates(const QString &programFolder);

// The first candidate that exists; empty when none does.
QString find(const QString &programFolder);

// Opens the guide with the desktop's application, or says why not.
void open(Prompter &prompter);

} // namespace UserGuide

} // namespace tavrel
