#pragma once

#include <functional>

#include "base/Subscription.h"
#include "platform/macos/dispatch/DispatchCalls.h"

namespace tolvane::machost {

/// What a source tells of, and the delay of a timer.
struct SourceRequest {
    SourceKind kind = SourceKind::timer;
    std::uintptr_t handle = 0;
    unsigned long mask = 0;
    /// Nanoseconds; read for timers.
    std::int64_t delay = 0;
    std::uint64_t leeway = 0;
};

/// Calls back on the main thread at each event until the subscription ends; never after it. Main thread.
/// A source that the system does not give never calls.
Subscription onEvent(const Dispatch& dispatch, const OnMain& onMain, const SourceRequest& request,
                     std::function<void()> happened);

}  // namespace tolvane::machost
