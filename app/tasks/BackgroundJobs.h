#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <utility>

#include "app/tasks/Executor.h"

namespace tolvane {

/// The threads for what blocks and is not sampling. Each kind of work has one of its own, so that a tool that hangs
/// holds up its own kind alone; it is made at the first use. Jobs of one kind run one after the other: containers that
/// are stopped and started again in a hurry are stopped first. Main thread.
class BackgroundJobs {
public:
    enum class Kind {
        /// Asking which processes the service manager keeps; a tick waits for it.
        services,
        /// Branches, containers and ports of projects.
        projectFacts,
        /// Stopping and starting containers.
        containers,
        /// Ports of the process that somebody looks at.
        portLookUps,
    };

    explicit BackgroundJobs(ExecutorFactory makeExecutor) : makeExecutor_(std::move(makeExecutor)) {}

    Executor& of(Kind kind) {
        auto& executor = executors_.at(static_cast<std::size_t>(kind));
        if (!executor) executor = makeExecutor_();
        return *executor;
    }
    /// Waits for the jobs that run and drops the others.
    void end() { executors_ = {}; }

private:
    ExecutorFactory makeExecutor_;
    std::array<std::unique_ptr<Executor>, 4> executors_;
};

}  // namespace tolvane
