#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tolvane {

/// Property-list files of other programs. Any thread.
class PropertyLists {
public:
    virtual ~PropertyLists() = default;

    /// The text under a top-level key; nullopt when the file or the key is missing or the value is no text.
    virtual std::optional<std::string> text(const std::string& path, std::string_view key) = 0;
};

}  // namespace tolvane
