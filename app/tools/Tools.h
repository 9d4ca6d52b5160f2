#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/projects/Docker.h"
#include "platform/ChildProcesses.h"

/// What other programs on the machine answer. Each call blocks for as long as the tool runs, without a time limit:
/// call it on background jobs only.
namespace tolvane::Tools {

/// What the tool printed, invalid UTF-8 repaired; nullopt when it is not there, could not be started or failed.
std::optional<std::string> run(ChildProcesses& children, std::string_view tool,
                               const std::vector<std::string>& arguments);

/// All running containers of the machine; empty when there is no client or it fails.
std::vector<Container> runningContainers(ChildProcesses& children);

/// Has the client "stop" or "start" the containers; true when it reports that it did, and without a call when there
/// are none.
bool performOnContainers(ChildProcesses& children, const std::string& verb, const std::vector<std::string>& ids);

/// Whether the branch follows one that its remote no longer has, as of the latest fetch. False when git cannot be
/// asked.
bool remoteGone(ChildProcesses& children, const std::string& root, const std::string& branch);

}  // namespace tolvane::Tools
