#pragma once

#include <string_view>

namespace tolvane {

/// What the program does when its window closes, and when it starts. The window is only a view of a model that runs
/// anyway, so the program keeps running wherever there is a way back to the window.
struct WindowLife {
    /// The tray icon leads back to the window.
    bool trayIsShown = false;
    /// Starting the program again leads back to it.
    bool secondStartOpens = false;

    enum class Closing {
        stays,
        /// Nothing on the screen shows that the program is running, so it notifies the user once.
        staysUnseen,
        quits,
    };

    constexpr Closing afterClosing() const {
        if (trayIsShown) return Closing::stays;
        return secondStartOpens ? Closing::staysUnseen : Closing::quits;
    }
    /// Without a tray to live in, a start at login opens the window like any other.
    constexpr bool opensAtStart(bool atLogin) const { return !atLogin || !trayIsShown; }

    static constexpr std::string_view unseenTitle = "Tolvane is still running";
    static constexpr std::string_view unseenText =
        "It has no icon on this desktop. Start Tolvane again to open its window, and press Ctrl+Q there to quit.";

    bool operator==(const WindowLife&) const = default;
};

}  // namespace tolvane
