#pragma once

#include <functional>

#include "base/Date.h"
#include "base/Subscription.h"

namespace tolvane {

/// The time, and wake-ups. Main thread, except `now` and `steadyTime`, which any thread may call.
class Clock {
public:
    virtual ~Clock() = default;

    virtual Date now() const = 0;
    /// Calls back once, no earlier than `delay` from now and no later than `delay + tolerance` as far as the machine
    /// allows. Time asleep counts. Ending the subscription cancels the call.
    virtual Subscription after(Seconds delay, Seconds tolerance, std::function<void()> passed) = 0;
    /// Time since some fixed moment, on a clock that cannot be set; time asleep counts. Comparing it with `now` shows
    /// when the wall clock was set. A host without such a clock returns its wall clock.
    virtual Seconds steadyTime() const { return now().time_since_epoch(); }
};

}  // namespace tolvane
