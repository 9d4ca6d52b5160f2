#pragma once

#include <set>
#include <string_view>

#include "base/Pid.h"
#include "platform/ChildProcesses.h"
#include "platform/ServiceManager.h"

/// Which processes the host's service manager keeps alive, so that projects leave them alone.
namespace tolvane::Launchd {

/// Asks the host, or its listing tool where it has no answer of its own. Empty when nothing can be learned.
/// Blocks: call it on background jobs only.
std::set<Pid> managedPIDs(ServiceManager& services, ChildProcesses& children);

/// Reads lines of number, status and label, parted by tabs, such as
///
///     PID	Status	Label
///     -	0	com.example.sleeping
///     812	0	com.example.agent
///
/// A line whose first field is no number adds nothing.
std::set<Pid> parsePIDs(std::string_view text);

}  // namespace tolvane::Launchd
