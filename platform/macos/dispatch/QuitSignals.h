#pragma once

#include <functional>

#include "base/Subscription.h"
#include "platform/macos/dispatch/DispatchCalls.h"

namespace tolvane::machost {

/// Calls back on the main thread when SIGTERM, SIGINT or SIGHUP asks the program to end. One subscription at a time;
/// main thread. Ending it restores the signals' previous handling.
Subscription onQuitSignal(const Dispatch& dispatch, const OnMain& onMain, const std::function<void()>& asked);

}  // namespace tolvane::machost
