#include "tests/platform/macos/FakeKernel.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>

namespace tolvane::machost {

namespace {

constexpr Port ownTask = 0x103;
constexpr Port machinePort = 0x203;
constexpr Port taskPorts = 0x10000;

int copyOut(const void* bytes, std::size_t length, void* buffer, int size) {
    const auto room = std::min(length, static_cast<std::size_t>(size));
    std::memcpy(buffer, bytes, room);
    return static_cast<int>(room);
}

}  // namespace

int failing(int error) {
    errno = error;
    return -1;
}

Date startedAt(std::uint64_t seconds, std::uint64_t microseconds) {
    return dateFromUnixSeconds(static_cast<double>(microseconds) / 1e6 + static_cast<double>(seconds));
}

FakeSocket listener(int descriptor, int port) {
    FakeSocket made{.descriptor = {.number = descriptor, .type = 2}, .info = {}};
    made.info.kind = 2;
    made.info.state = 1;
    made.info.localPort = ((port & 0xFF) << 8) | (port >> 8);
    return made;
}

FakeKernel::FakeKernel() {
    addProcessCalls();
    addMemoryCalls();
    addMachineCalls();
    addControlCalls();
}

FakeMacProcess& FakeKernel::add(Pid pid, const std::string& name, Pid ppid, std::uint32_t uid) {
    pids.push_back(pid);
    auto& made = processes[pid];
    made.info.ppid = static_cast<std::uint32_t>(ppid);
    made.info.uid = uid;
    std::memcpy(made.info.name.data(), name.data(), std::min(name.size(), made.info.name.size()));
    made.info.startSeconds = 1'700'000'000 + static_cast<std::uint64_t>(pid);
    made.info.startMicroseconds = 250'000;
    return made;
}

int FakeKernel::pidInfo(Pid pid, int flavour, void* buffer, int size) {
    const auto found = processes.find(pid);
    if (found == processes.end()) return failing(ESRCH);
    const auto& process = found->second;
    if (flavour == 3) return copyOut(&process.info, sizeof process.info, buffer, size);
    if (flavour == 9) {
        VnodePathInfo paths;
        std::memcpy(paths.folderPath.data(), process.folder.data(),
                    std::min(process.folder.size(), paths.folderPath.size()));
        return copyOut(&paths, sizeof paths, buffer, size);
    }
    std::vector<Descriptor> descriptors;
    for (const auto& socket : process.sockets) descriptors.push_back(socket.descriptor);
    const auto bytes = descriptors.size() * sizeof(Descriptor);
    return buffer == nullptr ? static_cast<int>(bytes) : copyOut(descriptors.data(), bytes, buffer, size);
}

int FakeKernel::descriptorInfo(Pid pid, int descriptor, void* buffer, int size) {
    const auto found = processes.find(pid);
    if (found == processes.end()) return failing(ESRCH);
    for (const auto& socket : found->second.sockets) {
        if (socket.descriptor.number == descriptor) return copyOut(&socket.info, sizeof socket.info, buffer, size);
    }
    return failing(EBADF);
}

int FakeKernel::arguments(const int* name, void* value, std::size_t* size) {
    const auto found = processes.find(name[2]);
    if (name[0] != 1 || name[1] != 49 || found == processes.end()) return failing(EINVAL);
    const auto& block = found->second.arguments;
    const std::size_t room = value == nullptr ? block.size() : std::min(*size, block.size());
    if (value != nullptr) std::memcpy(value, block.data(), room);
    *size = room;
    return 0;
}

void FakeKernel::addProcessCalls() {
    calls.timebase = [] { return Timebase{.numerator = 125, .denominator = 3}; };
    calls.listAllPids = [this](void* buffer, int size) {
        if (buffer == nullptr) return static_cast<int>(pids.size());
        return copyOut(pids.data(), pids.size() * sizeof(Pid), buffer, size) / static_cast<int>(sizeof(Pid));
    };
    calls.pidInfo = [this](Pid pid, int flavour, std::uint64_t, void* buffer, int size) {
        return pidInfo(pid, flavour, buffer, size);
    };
    calls.descriptorInfo = [this](Pid pid, int descriptor, int, void* buffer, int size) {
        return descriptorInfo(pid, descriptor, buffer, size);
    };
    calls.resourceUsage = [this](Pid pid, int, void* record) {
        const auto found = processes.find(pid);
        if (found == processes.end()) return failing(ESRCH);
        std::memcpy(record, &found->second.usage, sizeof(ResourceUsage));
        return 0;
    };
    calls.pidPath = [this](Pid pid, void* buffer, std::uint32_t size) {
        const auto found = processes.find(pid);
        if (found == processes.end() || found->second.path.empty()) return failing(ESRCH);
        return copyOut(found->second.path.data(), found->second.path.size(), buffer, static_cast<int>(size));
    };
    calls.systemValue = [this](const int* name, unsigned, void* value, std::size_t* size) {
        return arguments(name, value, size);
    };
}

void FakeKernel::addMemoryCalls() {
    calls.ownTask = [] { return ownTask; };
    calls.taskName = [this](Port, Pid pid, Port* task) {
        if (!processes.contains(pid)) return 5;
        *task = taskPorts + static_cast<Port>(pid);
        ++portsOut;
        return 0;
    };
    calls.taskInfo = [this](Port task, int, void* record, std::uint32_t* count) {
        std::memcpy(record, &processes.at(static_cast<Pid>(task - taskPorts)).memory, *count * 4);
        return 0;
    };
    calls.giveBackPort = [this](Port own, Port port) {
        if (own == ownTask && port != 0) --portsOut;
    };
}

void FakeKernel::addMachineCalls() {
    calls.machine = [this] {
        ++portsOut;
        return machinePort;
    };
    calls.systemValueByName = [this](const char* name, void* value, std::size_t* size) {
        const auto found = values.find(name);
        if (found == values.end()) return failing(ENOENT);
        *size = static_cast<std::size_t>(
            copyOut(found->second.data(), found->second.size(), value, static_cast<int>(*size)));
        return 0;
    };
    calls.hostStatistics64 = [this](Port host, int flavour, void* record, std::uint32_t* count) {
        if (host != machinePort || flavour != 4) return 4;
        std::memcpy(record, &memory, *count * 4);
        *count = 40;
        return 0;
    };
    calls.coreStatistics = [this](Port, int, std::uint32_t* cores, const std::uint32_t** block, std::uint32_t* count) {
        *cores = coreCount;
        *block = coreWords.data();
        *count = static_cast<std::uint32_t>(coreWords.size());
        ++blocksOut;
        return 0;
    };
    calls.giveBackBlock = [this](Port own, const std::uint32_t* block, std::size_t size) {
        if (own == ownTask && block == coreWords.data() && size == coreWords.size() * 4) --blocksOut;
    };
    calls.pageSize = [] { return 16384; };
    calls.activeCores = [] { return 10; };
}

void FakeKernel::addControlCalls() {
    calls.sendSignal = [this](Pid pid, int signal) {
        signals.emplace_back(pid, signal);
        return 0;
    };
    calls.setPriority = [this](int which, std::uint32_t who, int value) {
        priorities.push_back({which, static_cast<int>(who), value});
        return 0;
    };
    calls.spawn = [this](const SpawnRequest& request, Pid* pid) {
        spawned.push_back(request);
        *pid = 4711;
        return 0;
    };
    calls.ownPid = [] { return 900; };
    calls.ownUser = [] { return 501U; };
}

std::string argumentsBlock(const std::string& executable, const std::vector<std::string>& args,
                           const std::vector<std::string>& env) {
    std::string block = bytesOf(static_cast<std::int32_t>(args.size())) + executable;
    block.append(3, '\0');
    for (const auto& text : args) block.append(text).push_back('\0');
    for (const auto& text : env) block.append(text).push_back('\0');
    return block;
}

}  // namespace tolvane::machost
