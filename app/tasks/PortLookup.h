#pragma once

#include <functional>
#include <vector>

#include "app/tasks/CancelSource.h"
#include "app/tasks/Executor.h"
#include "platform/Host.h"

namespace tolvane {

/// Reads in the background which TCP ports a process listens on, since asking the kernel may take a while.
/// Main thread. Only the latest question is answered; destroying this object drops it too.
class PortLookup {
public:
    using Answer = std::function<void(std::vector<int>)>;

    /// Both outlive this.
    PortLookup(const Host& host, Executor& executor) : host_(host), executor_(executor) {}

    /// Calls back on the main thread with the ports, ascending and unique.
    void read(Pid pid, Answer answer);
    void forget() { question_.cancel(); }

private:
    const Host& host_;
    Executor& executor_;
    CancelSource question_;
};

}  // namespace tolvane
