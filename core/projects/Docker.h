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
    /// Folder of the compose project.
    std::optional<std::string> workingDir;

    bool operator==(const Container&) const = default;
};

}  // namespace tolvane

/// Containers, through the command-line client of the container engine.
namespace tolvane::Docker {

/// Parses the lines that the client prints for `ps --format '{{json .}}'`, one object each. Skips damaged lines. A
/// compose folder that contains a comma is cut there, because the client joins all labels with commas.
std::vector<Container> parse(std::string_view text);

/// The containers whose compose project lies in the folder or below it, in order.
std::vector<Container> containersIn(const std::vector<Container>& all, std::string_view root);

/// Where the client may be, in the order to try. The host knows further places.
std::vector<std::string> candidates(const std::string& home);

/// The first client that this user may run. Looked up on each call, so that one installed meanwhile is found.
std::optional<std::string> executable(ChildProcesses& children, const std::string& home);

/// All running containers of the machine; empty when there is no client or it fails. Blocks for as long as the engine
/// takes.
std::vector<Container> running(ChildProcesses& children, const std::string& home);

/// Makes the client "stop" or "start" the containers in one call, and returns whether it reports success. Without
/// containers it returns true and calls nothing. Blocks for as long as the engine takes.
bool perform(ChildProcesses& children, const std::string& home, const std::string& verb,
             const std::vector<std::string>& ids);

}  // namespace tolvane::Docker
