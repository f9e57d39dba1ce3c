#include "base/RecordingPrompter.h"
#include "cli/Commands.h"
#include "shell/JobFile.h"
#include "shell/PrintCheck.h"

#include <QCoreApplication>

namespace tavrel::cli {

int runCheckPrint(const QStringList &args) {
    if (wantsHelp(args) || args.size() != 1) {
        printOut(QStringLiteral(
            "Usage: tavrel-cli check-print JOBFILE\n\n"
            "Reads the print state from the job file (writing its defaults back, as a direct\n"
            "print run does), checks it, and prints the message the check would show, or OK.\n"
            "The exit status is 0 only when printing may go on.\n"));
        return wantsHelp(args) ? 0 : 2;
    }
    JobFile job = JobFile::load(args.first());
    const QString folder = job.templateFolder(QCoreApplication::applicationDirPath());
    RecordingPrompter prompter;
    if (checkPrintState(job, folder, prompter)) {
        printOut(QStringLiteral("OK\n"));
        return 0;
    }
    // The message may hold a carriage return; show it as a line break on a terminal.
    QString message = prompter.messages().value(0);
    message.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    printOut(message + QLatin1Char('\n'));
    return 1;
}

} // namespace tavrel::cli
