#pragma once

#include <string_view>

namespace tolvane {

/// The icon in the tray and its text.
struct TrayLabel {
    /// Name of a line icon.
    std::string_view symbol;
    std::string_view accessibleName;

    bool operator==(const TrayLabel&) const = default;

    static constexpr TrayLabel of(bool memoryTight) {
        return memoryTight ? TrayLabel{"memorychip.fill", "Tolvane, memory is tight"}
                           : TrayLabel{"memorychip", "Tolvane"};
    }
};

}  // namespace tolvane
