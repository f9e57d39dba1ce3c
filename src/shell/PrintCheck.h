#pragma once

#include "templates/ReportSelection.h"

namespace tavrel {

class JobFile;
class Prompter;

// The check before a direct print run: reads the print selection from the job (writing its
// defaults back), and when printing may not go on shows the reason (exclamation icon, the
// program's title) and answers false. *selection receives what was read either way.
bool checkPrintState(JobFile &job, const QString &templateFolder, Prompter &prompter,
                     ReportSelection *selection = nullptr);

} // namespace tavrel
