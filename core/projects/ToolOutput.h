#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/ChildProcesses.h"

namespace tolvane {

/// Runs a tool to its end and returns what it printed, with invalid UTF-8 repaired. Returns nullopt when the tool could
/// not be started or failed. There is no time limit: call it on background jobs only.
std::optional<std::string> toolOutput(ChildProcesses& children, const std::string& path,
                                      const std::vector<std::string>& arguments);

}  // namespace tolvane
