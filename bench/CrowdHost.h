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

/// A machine whose time passes when the benchmark says so, with made-up processes or this machine's own. A fifth of the
/// made-up ones belong to applications, the others are dev servers and tools; all are large and a tenth is active.
/// Files go into a folder of their own.
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

    /// CPU time of a tick on the thread that reads all processes, and on the main thread.
    struct Times {
        Seconds sample{0};
        Seconds after{0};
    };
    /// Lets so much time pass and has the model tick.
    Times tick(Seconds passed);
    /// The folder of the stored files.
    std::string storeFolder() const;
    /// Threads for the model that work within the call.
    ExecutorFactory executors();

private:
    struct Machine;
    std::shared_ptr<Machine> machine_;
    std::filesystem::path folder_;
};

}  // namespace tolvane::bench
