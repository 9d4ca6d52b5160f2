#include "app/Opening.h"

#include <utility>

namespace tolvane {

Opening::Opening(RunningApplications& running, std::string bundlePath, std::stop_token cancellation)
    : running_(running), bundlePath_(std::move(bundlePath)), cancellation_(std::move(cancellation)) {}

void Opening::Answer::resume() {
    if (const auto waiting = std::exchange(waiter, nullptr)) waiting.resume();
}

void Opening::await_suspend(std::coroutine_handle<> waiter) {
    answer_->waiter = waiter;
    canceller_.emplace(cancellation_, [answer = answer_] { answer->resume(); });
    // A host that answers at once resumes the waiter in here, which destroys this object: path and answer are copies.
    running_.openInBackground(std::string(bundlePath_), [answer = answer_](std::optional<std::string> error) {
        answer->error = std::move(error);
        answer->resume();
    });
}

}  // namespace tolvane
