#pragma once

#include <functional>

#include "base/Subscription.h"

namespace tolvane::linuxhost {

/// Calls back in the event loop when the session or a person asks the program to end: SIGTERM, SIGINT, and SIGHUP
/// unless it was ignored from the start. A second such signal, while the first is being handled, ends the program
/// at once. One at a time; main thread; needs the event loop.
Subscription onQuitSignal(std::function<void()> asked);

}  // namespace tolvane::linuxhost
