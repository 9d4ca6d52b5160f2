#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "app/Executor.h"
#include "platform/Host.h"
#include "platform/Windows.h"

namespace tolvane::bench {

/// A machine of made-up processes on which time passes when it is told to: a fifth in applications, the others dev
/// servers and tools, all of them large and a tenth at work. Everything that is stored goes into a folder of its own.
class CrowdHost {
public:
    explicit CrowdHost(int processes);
    ~CrowdHost();
    CrowdHost(const CrowdHost&) = delete;
    CrowdHost& operator=(const CrowdHost&) = delete;

    Host host;
    std::unique_ptr<Windows> windows;

    /// Lets so much time pass, has the model tick, and gives how long the tick held the main thread: all of it that
    /// comes after the sample.
    Seconds tick(Seconds passed);
    /// Threads for the model that work within the call.
    ExecutorFactory executors();

private:
    struct Machine;
    std::shared_ptr<Machine> machine_;
    std::filesystem::path folder_;
};

}  // namespace tolvane::bench
