#pragma once

#include <optional>
#include <string>

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
