#include "base/ErrorReport.h"

namespace tavrel {

QString errorReportText(const QString &procedure, int number, const QString &description) {
    return QStringLiteral("An Error Occured at - ") + procedure + QStringLiteral("\r\n\r\n") +
           QStringLiteral("Error Number: ") + QString::number(number) + QStringLiteral("\r\n") +
           QStringLiteral("Error Description: ") + description;
}

void reportError(Prompter &prompter, const QString &procedure, const RuntimeError &error) {
    prompter.message(errorReportText(procedure, error.number(), error.description()),
                     errorReportTitle(), MessageIcon::Exclamation, MessageButtons::Ok);
}

} // namespace tavrel
