#pragma once

#include <string_view>

namespace tolvane {

/// The text of a screen that has nothing to show.
struct EmptyText {
    std::string_view title;
    std::string_view sentence;
    /// Name of a line icon.
    std::string_view icon;

    bool operator==(const EmptyText&) const = default;
};

}  // namespace tolvane
