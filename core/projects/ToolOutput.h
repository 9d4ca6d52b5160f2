#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/ChildProcesses.h"

namespace tolvane {

/// Runs a tool to its end and gives what it printed, invalid UTF-8 repaired; none when it could not be started or
/// failed. It has no time limit: call it on background jobs only.
std::optional<std::string> toolOutput(ChildProcesses& children, const std::string& path,
                                      const std::vector<std::string>& arguments);

}  // namespace tolvane
