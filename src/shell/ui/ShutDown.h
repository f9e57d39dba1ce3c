#pragma once

namespace tavrel {

struct AppContext;

// Ends the program the way the parent application expects: release the layout elements, close
// the parent's "Tavrel In Progress" window, close every window of ours and leave the event loop.
void ShutDown(AppContext &context);

} // namespace tavrel
