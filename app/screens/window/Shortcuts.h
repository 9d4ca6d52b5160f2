#pragma once

#include <array>
#include <string_view>

namespace tolvane {

/// One keyboard shortcut.
struct Shortcut {
    /// In the toolkit's notation: "Ctrl+F".
    std::string_view keys;
    std::string_view action;
};

struct ShortcutGroup {
    std::string_view title;
    std::array<Shortcut, 7> shortcuts;
};

/// What the list of shortcuts shows; unused places of a group are empty.
namespace Shortcuts {

inline constexpr std::string_view title = "Keyboard Shortcuts";

inline constexpr std::array<ShortcutGroup, 5> groups = {{
    {"Everywhere",
     {{{"Ctrl+1", "Processes, and so on to Ctrl+7 in the order of the sidebar"},
       {"Ctrl+,", "Settings"},
       {"F10", "Menu"},
       {"F1", "Keyboard Shortcuts"},
       {"Ctrl+W", "Close the window"},
       {"Ctrl+Q", "Quit Tolvane"}}}},
    {"In lists",
     {{{"Ctrl+F", "Search"},
       {"Esc", "Leave the search, the selection or the dialog"},
       {"Ctrl+C", "Copy what is selected"},
       {"Ctrl+A", "Select all"},
       {"Shift+F10", "Menu of what is selected"},
       {"Del", "Force Quit…"}}}},
    {"In the inspector", {{{"Ctrl+Shift+Q", "Quit"}, {"Ctrl+Shift+F", "Force Quit"}}}},
    {"In rules",
     {{{"Ctrl+N", "Add Rule"},
       {"Ctrl+O", "Import Rules…"},
       {"Ctrl+S", "Export Rules…"},
       {"Del", "Delete the rule that is selected"}}}},
    {"In charts", {{{"Left", "Earlier"}, {"Right", "Later"}, {"Home", "First"}, {"End", "Last"}, {"Esc", "None"}}}},
}};

}  // namespace Shortcuts

}  // namespace tolvane
