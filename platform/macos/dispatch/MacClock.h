#pragma once

#include "platform/Clock.h"
#include "platform/macos/dispatch/DispatchCalls.h"

namespace tolvane::machost {

/// The wall clock, and one system timer for each wait. The timers use the wall clock too, since it is the one that
/// includes the machine's sleep; setting the clock back makes waits in progress longer.
class MacClock : public Clock {
public:
    MacClock(Dispatch dispatch, OnMain onMain);

    Date now() const override;
    Subscription after(Seconds delay, Seconds tolerance, std::function<void()> passed) override;

private:
    Dispatch dispatch_;
    OnMain onMain_;
};

}  // namespace tolvane::machost
