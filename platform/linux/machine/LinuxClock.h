#pragma once

#include <memory>

#include "platform/Clock.h"

namespace tolvane::linuxhost {

/// The machine's wall clock, and one kernel timer for all waiters. The timer runs on the clock that counts sleep, and
/// is off while there are no waiters. Needs the main thread's event loop, except for `now` and `steadyTime`.
class LinuxClock : public Clock {
public:
    LinuxClock();
    LinuxClock(const LinuxClock&) = delete;
    LinuxClock& operator=(const LinuxClock&) = delete;
    ~LinuxClock() override;

    Date now() const override;
    /// Time since boot.
    Seconds steadyTime() const override;
    Subscription after(Seconds delay, Seconds tolerance, std::function<void()> passed) override;

private:
    class Waiters;
    std::shared_ptr<Waiters> waiters_;
};

/// The moment from `due` to `latest` on the coarsest grid of 64, 32, … 1/64 seconds; `due` when no grid has one.
/// Programs that wake at round moments wake together.
Seconds roundestMoment(Seconds due, Seconds latest);

}  // namespace tolvane::linuxhost
