#pragma once

#include "shell/AppContext.h"
#include "shell/SettingsStore.h"

namespace tavrel {

class Prompter;

// The reading steps of start-up, each usable on its own so that the window program, the
// command-line tools and tests share them.
namespace Startup {

// The procedure name under which start-up reports its own failures.
QString procedureName();

// The SIF file, the parent's document and the order file as the job file names them, with no
// side effects (no folders made, nothing written back). False when no SIF file is named.
bool resolveDocumentPaths(const JobFile &job, JobPaths &paths);

// Reads the job file into the context and resolves the paths from it, creating the PDF, HTML and
// RTF folders. Returns false after showing "No Active Document Found." when the job names no SIF
// file, and after the error report when a path cannot be resolved (a relative path while the job
// file's folder is not known, a path beyond the system's length limit); the caller then shuts down,
// and no folder has been made. An empty "Template Directory" becomes executableFolder + "/Print
// Templates" and is written back to the job file; a failed write-back is reported and start-up goes
// on.
bool resolvePaths(AppContext &context, const QString &jobFile, const QString &executableFolder,
                  Prompter &prompter);

void readUserPreferences(AppContext &context);
// Reads the SIF file into the context; a failure is reported as "Load Sif.".
void readSpecification(AppContext &context, Prompter &prompter);
// Tests for the order file and reads it when present; a failing version test is reported as
// "CheckVersion Sub Procedure.".
void readOrderFile(AppContext &context, Prompter &prompter);
// A failed write-back of the printer name is reported; start-up goes on.
void readPrinterSettings(AppContext &context, const PrinterList &printers, Prompter &prompter);
void computePageArea(AppContext &context);
// The built-in lengths, then the job's lengths and labels over them.
void readFieldLengths(AppContext &context);

enum class RunModeAction { ShowMainWindow, PrintUnattended, End };
// "1" and "3" show the main window, "2" prints unattended; anything else, " 1" included, ends.
RunModeAction actionForRunMode(const QString &runMode);

// Every reading step in start-up's order, without window, single-instance test or registration.
// Returns false when start-up would end at path resolution.
bool loadJob(AppContext &context, const QString &jobFile, const QString &executableFolder,
             Prompter &prompter, const PrinterList &printers);

} // namespace Startup

} // namespace tavrel
