#pragma once

namespace tavrel {

class Prompter;
struct AppContext;

// Shows the main window; closing it runs ShutDown.
void showMainWindow(AppContext &context, Prompter &prompter);

} // namespace tavrel
