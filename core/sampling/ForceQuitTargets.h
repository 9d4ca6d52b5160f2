#pragma once

#include <vector>

#include "base/Pid.h"

namespace tolvane {

/// Processes that somebody wants gone, as one line of a list names them.
struct ForceQuitItem {
    std::vector<Pid> pids;
    /// The line is an application with its helpers.
    bool isApp = false;

    bool operator==(const ForceQuitItem&) const = default;
};

/// How each process is to go; a pid stands in one list, once.
struct ForceQuitTargets {
    /// Through the application that owns them.
    std::vector<Pid> apps;
    /// By a signal.
    std::vector<Pid> others;

    bool operator==(const ForceQuitTargets&) const = default;
};

/// In order of first appearance. What an application's line names goes with the application, wherever else it stands.
ForceQuitTargets forceQuitTargets(const std::vector<ForceQuitItem>& items);

}  // namespace tolvane
