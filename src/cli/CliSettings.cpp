#include "cli/Commands.h"
#include "cli/CupsPrinting.h"

#include "base/ConsolePrompter.h"
#include "shell/SettingsJson.h"
#include "shell/Startup.h"

#include <QCoreApplication>
#include <QJsonDocument>

namespace tavrel::cli {

int runSettings(const QStringList &args) {
    if (wantsHelp(args) || args.size() != 1) {
        printOut(QStringLiteral(
            "Usage: tavrel-cli settings JOBFILE\n\n"
            "Runs start-up's reading steps on the job file without a window and prints, as JSON,\n"
            "the \"Printer\" and \"User Preferences\" settings with their defaults applied and "
            "the\n"
            "values derived from them. What start-up writes back to the job file is written here\n"
            "too. Messages start-up would show go to standard error; the exit status is 1 when\n"
            "start-up would end (no SIF file named).\n"));
        return wantsHelp(args) ? 0 : 2;
    }
    ConsolePrompter prompter;
    AppContext context;
    const bool loaded = Startup::loadJob(context, args.first(), defaultTemplateRoot(), prompter,
                                         CupsPrinting::printers());
    if (!loaded)
        return 1;
    printOut(
        QString::fromUtf8(QJsonDocument(settingsToJson(context)).toJson(QJsonDocument::Indented)));
    return 0;
}

} // namespace tavrel::cli
