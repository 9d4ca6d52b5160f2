#pragma once

#include <vector>

#include "base/Pid.h"

namespace tolvane {

/// Processes to force quit, as one row of a list names them.
struct ForceQuitItem {
    std::vector<Pid> pids;
    /// Whether the row is an application with its helpers.
    bool isApp = false;

    bool operator==(const ForceQuitItem&) const = default;
};

/// How to end each process. A pid stands in one of the lists, once.
struct ForceQuitTargets {
    /// Through the application that owns them.
    std::vector<Pid> apps;
    /// By a signal.
    std::vector<Pid> others;

    bool operator==(const ForceQuitTargets&) const = default;
};

/// Keeps the order of first appearance. The processes of an application's row go with the application, even if other
/// rows name them too.
ForceQuitTargets forceQuitTargets(const std::vector<ForceQuitItem>& items);

}  // namespace tolvane
