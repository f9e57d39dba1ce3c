#include "base/RecordingPrompter.h"
#include "cli/Commands.h"
#include "shell/JobFile.h"
#include "shell/PrintCheck.h"

#include <QCoreApplication>

namespace tavrel::cli {

QString consoleText(QString message) {
    message.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return message;
}

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
    const QString folder = job.templateFolder(defaultTemplateRoot());
    RecordingPrompter prompter;
    if (checkPrintState(job, folder, prompter)) {
        printOut(QStringLiteral("OK\n"));
        return 0;
    }
    printOut(consoleText(prompter.messages().value(0)) + QLatin1Char('\n'));
    return 1;
}

} // namespace tavrel::cli
