#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>

#include "platform/Clock.h"

namespace tolvane::fakes {

/// Time that stands still until a test advances it. Calls run in the order in which they fall due, and each sees its
/// own due time as `now`.
class VirtualClock : public Clock {
public:
    explicit VirtualClock(Date start = Date{Seconds{800'000'000}}) : now_(start) {}

    Date now() const override { return now_; }
    Seconds steadyTime() const override { return now().time_since_epoch() - setBy_.load(); }
    Subscription after(Seconds delay, Seconds tolerance, std::function<void()> passed) override;

    /// Advances the clock and runs the calls that fall due, including those they schedule in turn.
    void advance(Seconds span);
    /// Moves the clock without running anything, as on a machine that sleeps.
    void jumpTo(Date date) { now_ = date; }
    /// Sets the wall clock, as a user would: no time passes.
    void setTo(Date date) {
        setBy_ = setBy_.load() + (date - now());
        now_ = date;
    }
    std::size_t waiting() const { return waiters_->size(); }
    /// Delay and tolerance of the latest call to `after`.
    Seconds latestDelay() const { return latestDelay_; }
    Seconds latestTolerance() const { return latestTolerance_; }

private:
    struct Key {
        Seconds due;
        std::uint64_t number;
        auto operator<=>(const Key&) const = default;
    };
    using Waiters = std::map<Key, std::function<void()>>;

    /// Read by any thread.
    std::atomic<Date> now_;
    Seconds elapsed_{0};
    std::uint64_t number_ = 0;
    Seconds latestDelay_{0};
    Seconds latestTolerance_{0};
    std::shared_ptr<Waiters> waiters_ = std::make_shared<Waiters>();
    std::atomic<Seconds> setBy_ = Seconds{0};
};

}  // namespace tolvane::fakes
