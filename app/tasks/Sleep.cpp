#include "app/tasks/Sleep.h"

#include <utility>

namespace tolvane {

Sleep::Sleep(Clock& clock, Seconds delay, Seconds tolerance, std::stop_token cancellation)
    : clock_(clock), delay_(delay), tolerance_(tolerance), cancellation_(std::move(cancellation)) {}

void Sleep::await_suspend(std::coroutine_handle<> sleeper) {
    sleeper_ = sleeper;
    timer_ = clock_.after(delay_, tolerance_, [this] { wake(Awoken::timePassed); });
    canceller_.emplace(cancellation_, [this] { wake(Awoken::cancelled); });
}

void Sleep::wake(Awoken how) {
    const auto sleeper = std::exchange(sleeper_, nullptr);
    if (!sleeper) return;
    awoken_ = how;
    // The sleeper continues past its co_await, which destroys this object: do not touch it after this call.
    sleeper.resume();
}

}  // namespace tolvane
