#pragma once

#include <functional>

#include "base/Date.h"
#include "base/Subscription.h"

namespace tolvane {

/// Tells the time and wakes its callers. Main thread, but for `now` and `steadyTime`, which any thread may ask.
class Clock {
public:
    virtual ~Clock() = default;

    virtual Date now() const = 0;
    /// Calls back once, no earlier than `delay` from now and no later than `delay + tolerance` as far as the machine
    /// allows. The time that the machine sleeps counts. Ending the subscription cancels the call.
    virtual Subscription after(Seconds delay, Seconds tolerance, std::function<void()> passed) = 0;
    /// Time since some moment, on a clock that nobody sets; the time that the machine sleeps counts. Against `now` it
    /// tells when the clock was set. A host without one gives its wall clock.
    virtual Seconds steadyTime() const { return now().time_since_epoch(); }
};

}  // namespace tolvane
