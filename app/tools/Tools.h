#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/projects/Docker.h"
#include "platform/ChildProcesses.h"

/// Asks other programs on the machine. Each call blocks for as long as the tool runs, without a time limit; call from
/// background jobs only.
namespace tolvane::Tools {

/// The tool's output with invalid UTF-8 repaired; nullopt when the tool is missing, cannot be started or fails.
std::optional<std::string> run(ChildProcesses& children, std::string_view tool,
                               const std::vector<std::string>& arguments);

/// All running containers of the machine; empty when the client is missing or fails.
std::vector<Container> runningContainers(ChildProcesses& children);

/// Makes the client "stop" or "start" the containers. True when the client reports success, and without a call when
/// there are no containers.
bool performOnContainers(ChildProcesses& children, const std::string& verb, const std::vector<std::string>& ids);

/// Whether the branch tracks one that its remote no longer has, as of the latest fetch. False when git cannot be asked.
bool remoteGone(ChildProcesses& children, const std::string& root, const std::string& branch);

}  // namespace tolvane::Tools
