#pragma once

#include <coroutine>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <type_traits>
#include <utility>

#include "app/tasks/Executor.h"

namespace tolvane {

/// `co_await BackgroundCall(executor, function, token)` suspends while `function` runs on the executor, and returns its
/// result. Cancelling resumes the waiter at once with nullopt; the function still runs to its end, but its result is
/// dropped. A coroutine that gets nullopt must return without touching its owner. Owner's thread.
template <typename Function>
class [[nodiscard]] BackgroundCall {
public:
    using Result = std::invoke_result_t<Function&>;

    BackgroundCall(Executor& executor, Function function, std::stop_token cancellation)
        : executor_(executor),
          job_(std::make_shared<Job>(std::move(function))),
          cancellation_(std::move(cancellation)) {}
    BackgroundCall(const BackgroundCall&) = delete;
    BackgroundCall& operator=(const BackgroundCall&) = delete;

    bool await_ready() const noexcept { return cancellation_.stop_requested(); }

    void await_suspend(std::coroutine_handle<> waiter) {
        job_->waiter = waiter;
        canceller_.emplace(cancellation_, [this] { job_->resume(); });
        // An executor that runs the job at once resumes the waiter inside this call, which destroys this object.
        executor_.submit([job = job_] { job->run(); }, [job = job_] { job->finish(); });
    }

    std::optional<Result> await_resume() { return job_->finished ? std::move(job_->result) : std::nullopt; }

private:
    /// Shared by the waiter and the executor, since either may be done with it first.
    struct Job {
        explicit Job(Function work) : function(std::move(work)) {}

        void run() { result.emplace(function()); }
        void finish() {
            finished = true;
            resume();
        }
        void resume() {
            if (const auto waiting = std::exchange(waiter, nullptr)) waiting.resume();
        }

        /// Belongs to the executor until `finish`; so does `result`.
        Function function;
        std::optional<Result> result;
        /// Belongs to the owner's thread, as does `waiter`, which is null once resumed.
        bool finished = false;
        std::coroutine_handle<> waiter;
    };

    Executor& executor_;
    std::shared_ptr<Job> job_;
    std::stop_token cancellation_;
    std::optional<std::stop_callback<std::function<void()>>> canceller_;
};

}  // namespace tolvane
