#include "base/ui/OutputNotice.h"

#include "base/Prompter.h"

#include <QDir>

namespace tavrel {

bool isViewOnlyRunMode(const QString &runMode) {
    return runMode == QLatin1String("3");
}

QString viewOnlyRefusalText() {
    return QStringLiteral("This report is for viewing only: printing and export are not "
                          "available.");
}

QString outputConfirmationText(const QString &what, const QString &path, OpenOutcome outcome) {
    QString text = what + QStringLiteral(" saved: ") + QDir::toNativeSeparators(path);
    if (outcome == OpenOutcome::NoApplication)
        text += QStringLiteral(" - no application could open it");
    return text;
}

void confirmOutput(Prompter &prompter, const QString &what, const QString &path,
                   OpenOutcome outcome) {
    prompter.status(outputConfirmationText(what, path, outcome));
}

OpenOutcome openAndConfirmOutput(Prompter &prompter, const QString &what, const QString &path,
                                 const QString &description) {
    const OpenOutcome outcome =
        prompter.openDocument(path, description) ? OpenOutcome::Opened : OpenOutcome::NoApplication;
    confirmOutput(prompter, what, path, outcome);
    return outcome;
}

} // namespace tavrel
