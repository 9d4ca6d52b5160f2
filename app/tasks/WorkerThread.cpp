#include "app/tasks/WorkerThread.h"

#include <QCoreApplication>
#include <QEvent>
#include <utility>

namespace tolvane {

WorkerThread::WorkerThread() : thread_([this](const std::stop_token& ending) { run(ending); }) {}

WorkerThread::~WorkerThread() = default;

void WorkerThread::submit(std::function<void()> job, std::function<void()> done) {
    {
        const std::lock_guard lock(mutex_);
        queue_.push_back({.job = std::move(job), .done = std::move(done)});
    }
    submitted_.notify_one();
}

void WorkerThread::run(const std::stop_token& ending) {
    while (auto task = next(ending)) {
        task->job();
        // Release what the job holds on this thread, before its owner hears that it is done.
        task->job = nullptr;
        tellOwner(std::move(task->done));
    }
}

std::optional<WorkerThread::Task> WorkerThread::next(const std::stop_token& ending) {
    std::unique_lock lock(mutex_);
    submitted_.wait(lock, ending, [this] { return !queue_.empty(); });
    if (ending.stop_requested()) return std::nullopt;
    Task task = std::move(queue_.front());
    queue_.pop_front();
    return task;
}

void WorkerThread::tellOwner(std::function<void()> done) {
    // Created before the lock is released, and thus before the owner's thread can see it.
    auto event = std::make_unique<QEvent>(QEvent::User);
    {
        const std::lock_guard lock(mutex_);
        finished_.push_back(std::move(done));
    }
    QCoreApplication::postEvent(this, event.release());
}

void WorkerThread::customEvent(QEvent*) { callDone(); }

void WorkerThread::callDone() {
    std::function<void()> done;
    {
        const std::lock_guard lock(mutex_);
        if (finished_.empty()) return;
        done = std::move(finished_.front());
        finished_.pop_front();
    }
    done();
}

}  // namespace tolvane
