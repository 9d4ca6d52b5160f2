#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <utility>

#include "app/tasks/Executor.h"

namespace tolvane::fakes {

/// Runs each job within the call that submits it.
class InlineExecutor : public Executor {
public:
    void submit(std::function<void()> job, std::function<void()> done) override {
        job();
        done();
    }

    static std::unique_ptr<Executor> make() { return std::make_unique<InlineExecutor>(); }
};

/// Jobs that a test lets run when it wants. Outlives the executors made from it.
class HeldJobs {
public:
    ExecutorFactory factory() {
        return [this] { return std::make_unique<Holding>(tasks_); };
    }
    std::size_t waiting() const { return tasks_->size(); }
    /// Runs the first job, then reports its end to the owner.
    void runNext() {
        auto task = std::move(tasks_->front());
        tasks_->pop_front();
        task.job();
        task.done();
    }
    void runAll() {
        while (waiting() > 0) runNext();
    }

private:
    struct Task {
        std::function<void()> job;
        std::function<void()> done;
    };
    using Tasks = std::deque<Task>;

    class Holding : public Executor {
    public:
        explicit Holding(std::shared_ptr<Tasks> tasks) : tasks_(std::move(tasks)) {}
        ~Holding() override { tasks_->clear(); }
        void submit(std::function<void()> job, std::function<void()> done) override {
            tasks_->push_back({.job = std::move(job), .done = std::move(done)});
        }

    private:
        std::shared_ptr<Tasks> tasks_;
    };

    std::shared_ptr<Tasks> tasks_ = std::make_shared<Tasks>();
};

}  // namespace tolvane::fakes
