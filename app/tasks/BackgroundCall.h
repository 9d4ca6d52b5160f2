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

/// `co_await BackgroundCall(executor, function, token)` suspends while `function` runs on the executor and gives what
/// it returned; none when the wait was cancelled, which resumes the waiter at once and leaves the function to run to
/// its end unheard. A coroutine that gets none must end without touching what it works for. Owner's thread.
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
        // An executor that works at once resumes the waiter in here, which destroys this object.
        executor_.submit([job = job_] { job->run(); }, [job = job_] { job->finish(); });
    }

    std::optional<Result> await_resume() { return job_->finished ? std::move(job_->result) : std::nullopt; }

private:
    /// Shared by the waiter and the executor: whichever goes first leaves it to the other.
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

        /// The executor's until `finish`; so is `result`.
        Function function;
        std::optional<Result> result;
        /// The owner's thread's, as is `waiter`: none once resumed.
        bool finished = false;
        std::coroutine_handle<> waiter;
    };

    Executor& executor_;
    std::shared_ptr<Job> job_;
    std::stop_token cancellation_;
    std::optional<std::stop_callback<std::function<void()>>> canceller_;
};

}  // namespace tolvane
