#include "app/WorkerThread.h"

#include <QMetaObject>
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
    while (auto [job, done] = next(ending); job) {
        job();
        // What the job holds is the caller's again before the caller hears of its end.
        job = nullptr;
        QMetaObject::invokeMethod(&owner_, std::move(done), Qt::QueuedConnection);
    }
}

WorkerThread::Task WorkerThread::next(const std::stop_token& ending) {
    std::unique_lock lock(mutex_);
    submitted_.wait(lock, ending, [this] { return !queue_.empty(); });
    if (ending.stop_requested()) return {};
    Task task = std::move(queue_.front());
    queue_.pop_front();
    return task;
}

}  // namespace tolvane
