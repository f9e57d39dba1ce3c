#pragma once

namespace tavrel {

class Prompter;
struct AppContext;

// Run mode "2": checks the job file's print selection (each refusal shown with its message) and
// prints the report on the job's printer without any window. Returns whether it printed.
bool printUnattended(AppContext &context, Prompter &prompter);

} // namespace tavrel
