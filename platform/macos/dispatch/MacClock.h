#pragma once

#include "platform/Clock.h"
#include "platform/macos/dispatch/DispatchCalls.h"

namespace tolvane::machost {

/// The wall clock, and one timer of the system for each wait. The timers run on the wall clock too, since that is the
/// one that counts the machine's sleep; a clock that is set back makes waits that run at that moment longer.
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
