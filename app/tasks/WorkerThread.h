#pragma once

#include <QObject>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>

#include "app/tasks/Executor.h"

namespace tolvane {

/// An executor with one thread of its own, which sleeps while there is nothing to do. Its owner's thread needs Qt's
/// event loop: that is where `done` is called.
class WorkerThread final : public QObject, public Executor {
public:
    WorkerThread();
    ~WorkerThread() override;

    void submit(std::function<void()> job, std::function<void()> done) override;

protected:
    void customEvent(QEvent* event) override;

private:
    struct Task {
        std::function<void()> job;
        std::function<void()> done;
    };

    // On the worker.
    void run(const std::stop_token& ending);
    /// None when the end has come.
    std::optional<Task> next(const std::stop_token& ending);
    void tellOwner(std::function<void()> done);

    // On the owner's thread.
    void callDone();

    std::mutex mutex_;
    std::condition_variable_any submitted_;
    std::deque<Task> queue_;
    /// One posted event each.
    std::deque<std::function<void()>> finished_;
    /// Last, so that it ends before what it uses.
    std::jthread thread_;
};

}  // namespace tolvane
