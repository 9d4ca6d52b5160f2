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
    /// Kernel ticks; with the pid it names one life.
    std::uint64_t startTicks = 0;
    /// Empty when it is shielded.
    std::string executable;
    /// The application's own control group; empty where it runs in one that others share.
    std::string group;

    bool operator==(const AppProcess&) const = default;
};

/// The processes of this user that belong to the application whose bundle path is given, but for this program's own.
std::vector<AppProcess> processesOf(Applications& applications, const std::string& appPath, const std::string& proc);

/// The processes as running instances, each the oldest first, the oldest instance first: what descends from one
/// process, or runs in one control group, is one instance.
std::vector<std::vector<AppProcess>> instancesOf(std::vector<AppProcess> processes);

/// The processes of one instance, which has at least one, that are the application itself: those that run the same
/// program as the oldest that is no shell, without what descends from them. What else an application starts, such as a
/// debugger's server, may stay when it goes.
std::vector<AppProcess> mainProcesses(const std::vector<AppProcess>& instance);

}  // namespace tolvane::linuxhost
