#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "app/tasks/Executor.h"
#include "platform/Host.h"
#include "platform/Windows.h"

namespace tolvane::bench {

/// A machine on which time passes when it is told to, of made-up processes or of those that are there. The made-up ones
/// are a fifth in applications, the others dev servers and tools, all of them large and a tenth at work. Everything
/// that is stored goes into a folder of its own.
class CrowdHost {
public:
    explicit CrowdHost(int processes);
    /// This machine's own processes.
    CrowdHost();
    ~CrowdHost();
    CrowdHost(const CrowdHost&) = delete;
    CrowdHost& operator=(const CrowdHost&) = delete;

    Host host;
    std::unique_ptr<Windows> windows;

    /// CPU time that a tick took on the thread that reads all processes, and then on the main one.
    struct Times {
        Seconds sample{0};
        Seconds after{0};
    };
    /// Lets so much time pass and has the model tick.
    Times tick(Seconds passed);
    /// Holds what is stored.
    std::string storeFolder() const;
    /// Threads for the model that work within the call.
    ExecutorFactory executors();

private:
    struct Machine;
    std::shared_ptr<Machine> machine_;
    std::filesystem::path folder_;
};

}  // namespace tolvane::bench
