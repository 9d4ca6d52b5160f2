#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ChildProcesses.h"

namespace tolvane {

/// One running container.
struct Container {
    std::string id;
    std::string name;
    /// The compose project's folder.
    std::optional<std::string> workingDir;

    bool operator==(const Container&) const = default;
};

}  // namespace tolvane

/// Containers as the client of the container engine tells of them.
namespace tolvane::Docker {

/// Reads the lines that the client prints for `ps --format '{{json .}}'`, one object each. A line that is damaged
/// costs only itself. A compose folder that holds a comma is cut there: the client joins all labels by commas.
std::vector<Container> parse(std::string_view text);

/// Those whose compose project lies in the folder or below it, in order.
std::vector<Container> containersIn(const std::vector<Container>& all, std::string_view root);

/// Where a client may stand, in the order in which they are tried; the host knows of further places.
std::vector<std::string> candidates(const std::string& home);

/// The first client that this user may run. Looked for anew each time, so that one installed meanwhile is found.
std::optional<std::string> executable(ChildProcesses& children, const std::string& home);

/// All running containers of the machine; none when there is no client or it fails. Blocks for as long as the engine
/// takes.
std::vector<Container> running(ChildProcesses& children, const std::string& home);

/// Has the client "stop" or "start" the containers, in one call; true when it says that it did, and without a call
/// when there are none. Blocks for as long as the engine takes.
bool perform(ChildProcesses& children, const std::string& home, const std::string& verb,
             const std::vector<std::string>& ids);

}  // namespace tolvane::Docker
