#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

#include "base/Pid.h"
#include "platform/macos/kernel/KernelRecords.h"

namespace tolvane::machost {

struct SpawnRequest;

/// The name of a Mach port in this process; 0 means no port.
using Port = std::uint32_t;

/// The system calls that the host makes, one to one with their own ways of failing, so that a test can replace the
/// kernel. Callable from any thread. On a Mac `processKernel()` has the real ones.
struct KernelCalls {
    /// Returns the number of pids, with a null buffer or a filled one; sizes are bytes.
    std::function<int(void* buffer, int size)> listAllPids;
    /// Returns the bytes filled; below 1 with errno set.
    std::function<int(Pid pid, int flavour, std::uint64_t argument, void* buffer, int size)> pidInfo;
    std::function<int(Pid pid, int descriptor, int flavour, void* buffer, int size)> descriptorInfo;
    /// 0 on success.
    std::function<int(Pid pid, int flavour, void* record)> resourceUsage;
    /// Returns the path's length; below 1 with errno set.
    std::function<int(Pid pid, void* buffer, std::uint32_t size)> pidPath;
    /// Returns 0 on success. `size` is the room, then what was filled or would be.
    std::function<int(const int* name, unsigned parts, void* value, std::size_t* size)> systemValue;
    std::function<int(const char* name, void* value, std::size_t* size)> systemValueByName;

    std::function<Timebase()> timebase;
    std::function<Port()> ownTask;
    /// These four return 0 on success. Counts are 32-bit words: the room, then what was filled.
    std::function<int(Port own, Pid pid, Port* task)> taskName;
    std::function<int(Port task, int flavour, void* record, std::uint32_t* count)> taskInfo;
    std::function<int(Port host, int flavour, void* record, std::uint32_t* count)> hostStatistics64;
    /// The caller must give the block back.
    std::function<int(Port host, int flavour, std::uint32_t* cores, const std::uint32_t** block, std::uint32_t* count)>
        coreStatistics;
    std::function<void(Port own, const std::uint32_t* block, std::size_t size)> giveBackBlock;
    std::function<void(Port own, Port port)> giveBackPort;
    /// The caller must give this right back.
    std::function<Port()> machine;
    std::function<int()> pageSize;
    /// Logical cores that take work.
    std::function<int()> activeCores;

    /// 0 on success.
    std::function<int(Pid pid, int signal)> sendSignal;
    std::function<int(int which, std::uint32_t who, int value)> setPriority;
    /// Returns 0 on success, else the error number.
    std::function<int(const SpawnRequest& request, Pid* pid)> spawn;
    std::function<Pid()> ownPid;
    std::function<std::uint32_t()> ownUser;
};

using Kernel = std::shared_ptr<const KernelCalls>;

}  // namespace tolvane::machost
