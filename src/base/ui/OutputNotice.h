#pragma once

#include <QString>

namespace tavrel {

class Prompter;

// Run mode "3" shows the report and nothing more: in the main window and in the preview alike,
// printing and every export are greyed, and the commands, reached all the same (a shortcut, a
// test), only say why in the status bar, before any dialog.
bool isViewOnlyRunMode(const QString &runMode);
QString viewOnlyRefusalText();

// Whether a written file was handed to the desktop and what came of it.
enum class OpenOutcome { NotAsked, Opened, NoApplication };

// The one confirmation every save and export of the windows gives, in the status bar of the
// window in front (Prompter::status): what was written and where, and, when the file was to be
// opened, that no application could open it.
//   "PDF file saved: /home/ann/Report.pdf"
//   "PDF file saved: /home/ann/Report.pdf - no application could open it"
QString outputConfirmationText(const QString &what, const QString &path, OpenOutcome outcome);
void confirmOutput(Prompter &prompter, const QString &what, const QString &path,
                   OpenOutcome outcome = OpenOutcome::NotAsked);
// Opens path with the desktop's application for it (description as for Prompter::openDocument)
// and confirms with the outcome; returns it.
OpenOutcome openAndConfirmOutput(Prompter &prompter, const QString &what, const QString &path,
                                 const QString &description);

} // namespace tavrel
