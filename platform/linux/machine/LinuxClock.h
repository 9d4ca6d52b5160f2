#pragma once

#include <memory>

#include "platform/Clock.h"

namespace tolvane::linuxhost {

/// The machine's wall clock, and one kernel timer for all waiters. The timer runs on the clock that counts sleep too;
/// it stands still while nobody waits. Needs the event loop of the main thread, but for `now` and `steadyTime`.
class LinuxClock : public Clock {
public:
    LinuxClock();
    LinuxClock(const LinuxClock&) = delete;
    LinuxClock& operator=(const LinuxClock&) = delete;
    ~LinuxClock() override;

    Date now() const override;
    /// Since the machine was started.
    Seconds steadyTime() const override;
    Subscription after(Seconds delay, Seconds tolerance, std::function<void()> passed) override;

private:
    class Waiters;
    std::shared_ptr<Waiters> waiters_;
};

/// The moment from `due` to `latest` that lies on the coarsest grid of 64, 32, … 1/64 seconds; `due` where none does.
/// Whoever wakes at round moments wakes together with others.
Seconds roundestMoment(Seconds due, Seconds latest);

}  // namespace tolvane::linuxhost
