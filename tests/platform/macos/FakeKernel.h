#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/Date.h"
#include "base/Pid.h"
#include "platform/macos/kernel/KernelCalls.h"
#include "platform/macos/kernel/Spawn.h"

namespace tolvane::machost {

struct FakeSocket {
    Descriptor descriptor;
    SocketInfo info;
};

struct FakeMacProcess {
    BSDInfo info;
    ResourceUsage usage;
    std::string path;
    std::string arguments;
    TaskMemory memory;
    /// Unset, the kernel knows the process but not its folder.
    std::string folder;
    std::vector<FakeSocket> sockets;
};

/// A small in-memory kernel that answers as the real one does. A test replaces the entry of `calls` that is to
/// misbehave.
class FakeKernel {
public:
    FakeKernel();
    FakeKernel(const FakeKernel&) = delete;
    FakeKernel& operator=(const FakeKernel&) = delete;

    FakeMacProcess& add(Pid pid, const std::string& name, Pid ppid = 1, std::uint32_t uid = 501);
    /// The calls as they are now; the fake outlives the table.
    Kernel table() const { return std::make_shared<const KernelCalls>(calls); }

    KernelCalls calls;
    /// In the kernel's order.
    std::vector<Pid> pids;
    std::map<Pid, FakeMacProcess> processes;
    std::map<std::string, std::string> values;
    MachineMemory memory;
    std::vector<std::uint32_t> coreWords;
    std::uint32_t coreCount = 0;
    /// Port rights and blocks handed out and not given back.
    int portsOut = 0;
    int blocksOut = 0;
    std::vector<std::pair<Pid, int>> signals;
    /// Which, who, value.
    std::vector<std::array<int, 3>> priorities;
    std::vector<SpawnRequest> spawned;

private:
    void addProcessCalls();
    void addMemoryCalls();
    void addMachineCalls();
    void addControlCalls();
    int pidInfo(Pid pid, int flavour, void* buffer, int size);
    int descriptorInfo(Pid pid, int descriptor, void* buffer, int size);
    int arguments(const int* name, void* value, std::size_t* size);
};

/// Returns -1 with errno set, as a failing kernel call does.
int failing(int error);

/// Seconds since 1970 and microseconds.
Date startedAt(std::uint64_t seconds, std::uint64_t microseconds);

/// A listening TCP socket, with its port as the kernel stores it.
FakeSocket listener(int descriptor, int port);

/// The bytes of a process-arguments block, as the kernel lays them out.
std::string argumentsBlock(const std::string& executable, const std::vector<std::string>& args,
                           const std::vector<std::string>& env = {});

template <typename Type>
std::string bytesOf(const Type& value) {
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

}  // namespace tolvane::machost
