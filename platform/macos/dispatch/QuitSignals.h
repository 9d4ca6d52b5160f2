#pragma once

#include <functional>

#include "base/Subscription.h"
#include "platform/macos/dispatch/DispatchCalls.h"

namespace tolvane::machost {

/// Calls back on the main thread when the session or a person asks the program to end by SIGTERM, SIGINT or SIGHUP.
/// One at a time; main thread. With the subscription's end the signals do again what they did.
Subscription onQuitSignal(const Dispatch& dispatch, const OnMain& onMain, const std::function<void()>& asked);

}  // namespace tolvane::machost
