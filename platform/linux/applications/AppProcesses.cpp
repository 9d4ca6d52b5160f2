#include "platform/linux/applications/AppProcesses.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <map>
#include <numeric>
#include <optional>

#include "base/files/Files.h"
#include "platform/Applications.h"
#include "platform/linux/applications/AppUnit.h"
#include "platform/linux/processes/ProcFiles.h"
#include "platform/linux/processes/ProcStat.h"
#include "platform/linux/processes/ProcStatus.h"
#include "platform/linux/text/DesktopEntry.h"
#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

constexpr std::size_t procFileLimit = 1U << 20U;

std::string read(const std::string& proc, Pid pid, const char* name) {
    return Files::readKernelFile(proc + "/" + std::to_string(pid) + "/" + name, procFileLimit).value_or("");
}

std::vector<Pid> allPids(const std::string& proc) {
    std::vector<Pid> pids;
    std::error_code error;
    for (std::filesystem::directory_iterator entries(proc, error);
         !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
        const std::string name = entries->path().filename().string();
        Pid pid = 0;
        const auto [end, failure] = std::from_chars(name.data(), name.data() + name.size(), pid);
        if (failure == std::errc() && end == name.data() + name.size() && pid != ::getpid()) pids.push_back(pid);
    }
    return pids;
}

bool isOurs(const std::string& proc, Pid pid) {
    const auto status = parseProcStatus(read(proc, pid, "status"));
    return status && status->uid == ::getuid();
}

std::optional<AppProcess> readProcess(const std::string& proc, Pid pid) {
    const auto stat = readProcStat(proc, pid);
    if (!stat || stat->isGone()) return std::nullopt;
    std::string group = read(proc, pid, "cgroup");
    if (appIdentifiersOfCgroup(group).empty()) group.clear();
    return AppProcess{.pid = pid,
                      .ppid = stat->ppid,
                      .startTicks = stat->startTicks,
                      .executable = executableOf(proc, pid),
                      .group = std::move(group)};
}

/// Disjoint sets that can be merged: each element leads to the one that represents its set.
class Sets {
public:
    explicit Sets(std::size_t size) : leaders_(size) { std::iota(leaders_.begin(), leaders_.end(), 0U); }

    std::size_t leader(std::size_t element) const {
        while (leaders_[element] != element) element = leaders_[element];
        return element;
    }
    void join(std::size_t one, std::size_t other) {
        one = leader(one);
        other = leader(other);
        leaders_[std::max(one, other)] = std::min(one, other);
    }

private:
    std::vector<std::size_t> leaders_;
};

bool isOlder(const AppProcess& one, const AppProcess& other) {
    return std::pair(one.startTicks, one.pid) < std::pair(other.startTicks, other.pid);
}

}  // namespace

std::vector<AppProcess> processesOf(Applications& applications, const std::string& appPath, const std::string& proc) {
    std::vector<AppProcess> found;
    for (const Pid pid : allPids(proc)) {
        if (!isOurs(proc, pid)) continue;
        auto process = readProcess(proc, pid);
        if (!process) continue;
        const auto owner = applications.appPath(pid, process->executable);
        if (owner && *owner == appPath) found.push_back(std::move(*process));
    }
    return found;
}

std::vector<std::vector<AppProcess>> instancesOf(std::vector<AppProcess> processes) {
    std::ranges::sort(processes, isOlder);
    std::map<Pid, std::size_t> byPid;
    std::map<std::string, std::size_t> byGroup;
    for (std::size_t index = 0; index < processes.size(); ++index) byPid.emplace(processes[index].pid, index);
    Sets sets(processes.size());
    for (std::size_t index = 0; index < processes.size(); ++index) {
        const AppProcess& process = processes[index];
        if (const auto parent = byPid.find(process.ppid); parent != byPid.end()) sets.join(index, parent->second);
        if (!process.group.empty()) sets.join(index, byGroup.emplace(process.group, index).first->second);
    }
    std::map<std::size_t, std::vector<AppProcess>> byLeader;
    for (std::size_t index = 0; index < processes.size(); ++index)
        byLeader[sets.leader(index)].push_back(std::move(processes[index]));
    std::vector<std::vector<AppProcess>> instances;
    for (auto& [leader, members] : byLeader) instances.push_back(std::move(members));
    return instances;
}

std::vector<AppProcess> mainProcesses(const std::vector<AppProcess>& instance) {
    const auto isProgram = [](const AppProcess& process) {
        return !isShellName(Scan::lastComponent(process.executable));
    };
    const auto oldest = std::ranges::find_if(instance, isProgram);
    const std::string& program = (oldest == instance.end() ? instance.begin() : oldest)->executable;
    std::vector<AppProcess> found;
    for (const AppProcess& process : instance) {
        const bool isBelow = std::ranges::any_of(instance, [&](const AppProcess& other) {
            return other.pid == process.ppid && other.executable == program;
        });
        if (!isBelow && process.executable == program) found.push_back(process);
    }
    return found;
}

}  // namespace tolvane::linuxhost
