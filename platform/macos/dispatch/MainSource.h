#pragma once

#include <functional>

#include "base/Subscription.h"
#include "platform/macos/dispatch/DispatchCalls.h"

namespace tolvane::machost {

/// Which events a source reports, and a timer's delay.
struct SourceRequest {
    SourceKind kind = SourceKind::timer;
    std::uintptr_t handle = 0;
    unsigned long mask = 0;
    /// Nanoseconds; timers only.
    std::int64_t delay = 0;
    std::uint64_t leeway = 0;
};

/// Calls back on the main thread at each event, and never after the subscription ends. Main thread. If the system does
/// not provide the source, it never calls.
Subscription onEvent(const Dispatch& dispatch, const OnMain& onMain, const SourceRequest& request,
                     std::function<void()> happened);

}  // namespace tolvane::machost
