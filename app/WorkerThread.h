#pragma once

#include <QObject>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <stop_token>
#include <thread>

#include "app/Executor.h"

namespace tolvane {

/// An executor with one thread of its own, which sleeps while there is nothing to do. Its owner's thread needs Qt's
/// event loop: that is where `done` is called.
class WorkerThread final : public Executor {
public:
    WorkerThread();
    ~WorkerThread() override;

    void submit(std::function<void()> job, std::function<void()> done) override;

private:
    struct Task {
        std::function<void()> job;
        std::function<void()> done;
    };

    void run(const std::stop_token& ending);
    /// The next task; one without a job when the end has come.
    Task next(const std::stop_token& ending);

    /// Lives on the owner's thread; what was sent to it goes with it.
    QObject owner_;
    std::mutex mutex_;
    std::condition_variable_any submitted_;
    std::deque<Task> queue_;
    /// Last, so that it ends before what it uses.
    std::jthread thread_;
};

}  // namespace tolvane
