#pragma once

#include <coroutine>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>

#include "platform/RunningApplications.h"

namespace tolvane {

/// `co_await AppLaunch(...)` starts an application in the background and suspends until the host answers. Returns
/// nullopt on success, otherwise the host's error message. Cancelling resumes the waiter at once with nullopt and
/// ignores the host's answer; a cancelled coroutine must return without touching its owner. Main thread.
class [[nodiscard]] AppLaunch {
public:
    AppLaunch(RunningApplications& running, std::string appPath, std::stop_token cancellation);
    AppLaunch(const AppLaunch&) = delete;
    AppLaunch& operator=(const AppLaunch&) = delete;

    bool await_ready() const noexcept { return cancellation_.stop_requested(); }
    void await_suspend(std::coroutine_handle<> waiter);
    std::optional<std::string> await_resume() { return std::move(answer_->error); }

private:
    /// Shared with the host, which may answer after the waiter is gone.
    struct Answer {
        std::coroutine_handle<> waiter;
        std::optional<std::string> error;

        void resume();
    };

    RunningApplications& running_;
    std::string appPath_;
    std::stop_token cancellation_;
    std::shared_ptr<Answer> answer_ = std::make_shared<Answer>();
    std::optional<std::stop_callback<std::function<void()>>> canceller_;
};

}  // namespace tolvane
