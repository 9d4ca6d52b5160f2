#pragma once

#include <set>
#include <string_view>

#include "platform/ChildProcesses.h"
#include "platform/ServiceManager.h"

namespace tolvane::machost {

/// launchd has no interface for this, so its own listing tool is run.
class LaunchdServices : public ServiceManager {
public:
    /// `children` outlives this object.
    explicit LaunchdServices(ChildProcesses& children) : children_(children) {}

    std::set<Pid> managedPIDs() override;

private:
    ChildProcesses& children_;
};

/// Reads lines of number, status and label, parted by tabs, such as
///
///     PID	Status	Label
///     -	0	com.example.sleeping
///     812	0	com.example.agent
///
/// A line whose first field is no number adds nothing.
std::set<Pid> pidsOfJobs(std::string_view text);

}  // namespace tolvane::machost
