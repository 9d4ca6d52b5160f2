#pragma once

#include <string_view>

namespace tolvane {

/// The icon in the tray.
struct MenuBarLabel {
    /// Name in the set of line icons.
    std::string_view symbol;
    std::string_view accessibleName;

    bool operator==(const MenuBarLabel&) const = default;

    static constexpr MenuBarLabel of(bool memoryTight) {
        return memoryTight ? MenuBarLabel{"memorychip.fill", "Tolvane, memory is tight"}
                           : MenuBarLabel{"memorychip", "Tolvane"};
    }
};

}  // namespace tolvane
