#pragma once

#include <functional>
#include <memory>

namespace tolvane {

/// Runs jobs off the thread that owns it, one at a time, in the order of submission.
/// The destructor waits for the running job and drops the others; no `done` is called from then on.
class Executor {
public:
    virtual ~Executor() = default;

    /// `done` runs on the owner's thread after `job`; jobs do not throw.
    virtual void submit(std::function<void()> job, std::function<void()> done) = 0;
};

using ExecutorFactory = std::function<std::unique_ptr<Executor>()>;

}  // namespace tolvane
