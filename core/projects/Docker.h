#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

/// Arguments for the container engine's client, and the parser for its output.
namespace tolvane::Docker {

/// The arguments that list all running containers of the machine.
std::vector<std::string> listArguments();

/// The arguments that have the client "stop" or "start" the containers, in one call.
std::vector<std::string> arguments(const std::string& verb, const std::vector<std::string>& ids);

/// Parses the lines that the client prints for `listArguments`, one object each. Skips damaged lines. A compose
/// folder that contains a comma is cut there, because the client joins all labels with commas.
std::vector<Container> parse(std::string_view text);

/// The containers whose compose project lies in the folder or below it, in order.
std::vector<Container> containersIn(const std::vector<Container>& all, std::string_view root);

}  // namespace tolvane::Docker
