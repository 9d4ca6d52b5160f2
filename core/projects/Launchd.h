#pragma once

#include <set>
#include <string_view>

#include "base/Pid.h"
#include "platform/ChildProcesses.h"
#include "platform/ServiceManager.h"

/// The processes that the service manager of the host keeps alive. Projects leave them alone.
namespace tolvane::Launchd {

/// Asks the host, or runs its listing tool if the host has no answer of its own. Empty when neither works. Blocks: call
/// it on background jobs only.
std::set<Pid> managedPIDs(ServiceManager& services, ChildProcesses& children);

/// Reads lines of number, status and label, parted by tabs, such as
///
///     PID	Status	Label
///     -	0	com.example.sleeping
///     812	0	com.example.agent
///
/// Lines whose first field is not a number are skipped.
std::set<Pid> parsePIDs(std::string_view text);

}  // namespace tolvane::Launchd
