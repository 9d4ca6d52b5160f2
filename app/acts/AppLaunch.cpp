#include "app/acts/AppLaunch.h"

#include <utility>

namespace tolvane {

AppLaunch::AppLaunch(RunningApplications& running, std::string appPath, std::stop_token cancellation)
    : running_(running), appPath_(std::move(appPath)), cancellation_(std::move(cancellation)) {}

void AppLaunch::Answer::resume() {
    if (const auto waiting = std::exchange(waiter, nullptr)) waiting.resume();
}

void AppLaunch::await_suspend(std::coroutine_handle<> waiter) {
    answer_->waiter = waiter;
    canceller_.emplace(cancellation_, [answer = answer_] { answer->resume(); });
    // A host that answers at once resumes the waiter inside this call, which destroys this object: hence the copies.
    running_.openInBackground(std::string(appPath_), [answer = answer_](std::optional<std::string> error) {
        answer->error = std::move(error);
        answer->resume();
    });
}

}  // namespace tolvane
