#pragma once

#include <QString>

namespace tavrel {

class Prompter;
struct AppContext;

// The whole start-up of the window program, from the single-instance test to the run mode.
// Returns true when the event loop should run (a window is shown), false when the program
// ends now.
bool startApplication(AppContext &context, const QString &jobFile, Prompter &prompter);

} // namespace tavrel
