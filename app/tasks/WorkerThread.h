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

/// An executor with its own thread, which sleeps while there is nothing to do. The owner's thread must run Qt's event
/// loop, which calls `done`.
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
    /// Returns nullopt once the thread is to end.
    std::optional<Task> next(const std::stop_token& ending);
    void tellOwner(std::function<void()> done);

    // On the owner's thread.
    void callDone();

    std::mutex mutex_;
    std::condition_variable_any submitted_;
    std::deque<Task> queue_;
    /// One posted event each.
    std::deque<std::function<void()>> finished_;
    /// Declared last, so that it is joined before the members it uses are destroyed.
    std::jthread thread_;
};

}  // namespace tolvane
