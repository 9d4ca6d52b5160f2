#pragma once

#include <string_view>

namespace tolvane {

/// What a screen says while it has nothing to show.
struct EmptyText {
    std::string_view title;
    std::string_view sentence;
    /// Name in the set of line icons.
    std::string_view icon;

    bool operator==(const EmptyText&) const = default;
};

}  // namespace tolvane
