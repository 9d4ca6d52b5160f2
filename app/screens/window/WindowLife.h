#pragma once

#include <string_view>

namespace tolvane {

/// What becomes of the program when its window closes, and what it does when it starts. The window is only a view of a
/// model that runs anyway: the program stays wherever there is a way back to it.
struct WindowLife {
    /// An icon in the tray leads back to the window.
    bool trayIsShown = false;
    /// Starting the program again leads back to it.
    bool secondStartOpens = false;

    enum class Closing {
        stays,
        /// Nothing on the screen tells that it is there: once, it says so.
        staysUnseen,
        quits,
    };

    constexpr Closing afterClosing() const {
        if (trayIsShown) return Closing::stays;
        return secondStartOpens ? Closing::staysUnseen : Closing::quits;
    }
    /// Without a tray to live in, the session's start is like any other.
    constexpr bool opensAtStart(bool atLogin) const { return !atLogin || !trayIsShown; }

    static constexpr std::string_view unseenTitle = "Tolvane is still running";
    static constexpr std::string_view unseenText =
        "It has no icon on this desktop. Start Tolvane again to open its window, and press Ctrl+Q there to quit.";

    bool operator==(const WindowLife&) const = default;
};

}  // namespace tolvane
