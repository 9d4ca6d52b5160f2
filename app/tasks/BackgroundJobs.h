#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <utility>

#include "app/tasks/Executor.h"

namespace tolvane {

/// The threads for blocking work other than sampling. Each kind of work has its own thread, created on first use, so
/// that a tool that hangs holds up only its own kind. Jobs of one kind run in order: containers that are stopped and
/// at once started again are stopped first. Main thread.
class BackgroundJobs {
public:
    enum class Kind {
        /// Asking which processes the service manager runs; a tick waits for the answer.
        services,
        /// Branches, containers and ports of projects.
        projectFacts,
        /// Stopping and starting containers.
        containers,
        /// Ports of the process that the user looks at.
        portLookUps,
    };

    explicit BackgroundJobs(ExecutorFactory makeExecutor) : makeExecutor_(std::move(makeExecutor)) {}

    Executor& of(Kind kind) {
        auto& executor = executors_.at(static_cast<std::size_t>(kind));
        if (!executor) executor = makeExecutor_();
        return *executor;
    }
    /// Waits for running jobs and drops the queued ones.
    void end() { executors_ = {}; }

private:
    ExecutorFactory makeExecutor_;
    std::array<std::unique_ptr<Executor>, 4> executors_;
};

}  // namespace tolvane
