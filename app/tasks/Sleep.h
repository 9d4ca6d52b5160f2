#pragma once

#include <coroutine>
#include <functional>
#include <optional>
#include <stop_token>

#include "platform/Clock.h"

namespace tolvane {

enum class Awoken { timePassed, cancelled };

/// `co_await Sleep(...)` suspends on the host's clock until the delay has passed or the wait is cancelled. Cancelling
/// resumes the coroutine inside the cancelling call; it must then return without touching its owner, which may be in
/// its destructor. Main thread; the clock outlives the wait.
class [[nodiscard]] Sleep {
public:
    /// The clock may be late by `tolerance`.
    Sleep(Clock& clock, Seconds delay, Seconds tolerance, std::stop_token cancellation);
    Sleep(const Sleep&) = delete;
    Sleep& operator=(const Sleep&) = delete;

    bool await_ready() const noexcept { return cancellation_.stop_requested(); }
    void await_suspend(std::coroutine_handle<> sleeper);
    Awoken await_resume() const noexcept { return awoken_; }

private:
    void wake(Awoken how);

    Clock& clock_;
    Seconds delay_;
    Seconds tolerance_;
    std::stop_token cancellation_;
    /// Null once woken: the second of the two wakers finds nothing to do.
    std::coroutine_handle<> sleeper_;
    Awoken awoken_ = Awoken::cancelled;
    Subscription timer_;
    std::optional<std::stop_callback<std::function<void()>>> canceller_;
};

}  // namespace tolvane
