#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/Pid.h"

namespace tolvane {
class Applications;
}

namespace tolvane::linuxhost {

/// One process of an application.
struct AppProcess {
    Pid pid = 0;
    Pid ppid = 0;
    /// In kernel ticks; identifies one process together with the pid.
    std::uint64_t startTicks = 0;
    /// Empty when the kernel does not reveal it.
    std::string executable;
    /// The application's own control group; empty when it shares one with others.
    std::string group;

    bool operator==(const AppProcess&) const = default;
};

/// This user's processes that belong to the application with the given bundle path, except this program's own.
std::vector<AppProcess> processesOf(Applications& applications, const std::string& appPath, const std::string& proc);

/// Groups the processes into running instances, both in order of age with the oldest first. Processes that descend from
/// one process, or run in one control group, form one instance.
std::vector<std::vector<AppProcess>> instancesOf(std::vector<AppProcess> processes);

/// The processes of a non-empty instance that are the application itself: those that run the same program as the oldest
/// process other than a shell, without their descendants. Other processes that an application starts, such as a
/// debugger's server, may outlive it.
std::vector<AppProcess> mainProcesses(const std::vector<AppProcess>& instance);

}  // namespace tolvane::linuxhost
