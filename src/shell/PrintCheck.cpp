#include "shell/PrintCheck.h"

#include "base/Prompter.h"
#include "shell/JobFile.h"
#include "templates/PrintSelection.h"

namespace tavrel {

bool checkPrintState(JobFile &job, const QString &templateFolder, Prompter &prompter,
                     ReportSelection *selection) {
    const ReportSelection read = job.reportSelection(templateFolder);
    if (selection)
        *selection = read;
    const QString message = PrintSelection::checkMessage(read);
    if (message.isEmpty())
        return true;
    prompter.message(message, QString(), MessageIcon::Exclamation);
    return false;
}

} // namespace tavrel
