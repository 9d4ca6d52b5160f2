#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <string>

namespace tolvane::linuxhost::testing {

/// A process that a test starts and that ends with it. It runs its steps one after the other, each on request.
class Child {
public:
    using Step = std::function<void()>;

    /// `first` runs at once; each `next()` runs `then`. Afterwards the child waits to be killed.
    explicit Child(Step first, Step then = {});
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    pid_t pid() const { return pid_; }
    /// Runs `then` and waits until it is done.
    void next();
    /// The same without waiting: `then` executes another program or ends.
    void nextAndGo();

private:
    [[noreturn]] void run(const Step& first, const Step& then) const;

    pid_t pid_ = -1;
    int commands_[2] = {-1, -1};
    int answers_[2] = {-1, -1};
};

/// Polls until the condition holds, for five seconds at most.
bool eventually(const std::function<bool()>& isSo);

/// Takes so much private memory for good.
void touch(std::size_t megabytes);

/// The content of a real file, empty when it cannot be read.
std::string contentOf(const std::string& path);

}  // namespace tolvane::linuxhost::testing
