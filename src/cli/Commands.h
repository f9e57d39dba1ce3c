#pragma once

#include <QStringList>

// The sub-commands of tavrel-cli. Each takes the arguments after its name and returns the
// process exit status; each answers --help.
namespace tavrel::cli {

int runSettings(const QStringList &args);
int runSpec(const QStringList &args);
int runTemplate(const QStringList &args);
int runCheckPrint(const QStringList &args);
int runRender(const QStringList &args);

// Helpers shared by the commands.
bool wantsHelp(const QStringList &args);
void printOut(const QString &text);
void printErr(const QString &text);
// The folder whose "Print Templates" a job with an empty "Template Directory" uses: beside the
// executable in a development build, the user's data folder for an installed program.
QString defaultTemplateRoot();

// A refusal of the print check as a terminal shows it: its carriage return becomes a line break.
QString consoleText(QString message);

} // namespace tavrel::cli
