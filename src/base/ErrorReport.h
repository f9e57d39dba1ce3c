#pragma once

#include "base/Prompter.h"
#include "base/RuntimeError.h"

namespace tavrel {

// The text of the one message box that reports a trapped run-time error.
QString errorReportText(const QString &procedure, int number, const QString &description);

// Shows the error report ("Tavrel - Error", exclamation icon, OK) for a procedure such as
// "Load Sif." and returns; the caller goes on.
void reportError(Prompter &prompter, const QString &procedure, const RuntimeError &error);

inline const QString &errorReportTitle() {
    static const QString title = QStringLiteral("Tavrel - Error");
    return title;
}

} // namespace tavrel
