#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tolvane {

/// Property-list files that other programs left. Any thread.
class PropertyLists {
public:
    virtual ~PropertyLists() = default;

    /// The text under a key at the top of the file; none when the file, the key or that type is missing.
    virtual std::optional<std::string> text(const std::string& path, std::string_view key) = 0;
};

}  // namespace tolvane
