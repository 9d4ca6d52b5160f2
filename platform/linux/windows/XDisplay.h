#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Pid.h"

struct xcb_connection_t;

namespace tolvane::linuxhost {

/// A connection to the X server for questions about the windows of all programs. Main thread. A question is one or a
/// few round trips to the server on this machine; without the server every answer is empty.
class XDisplay {
public:
    using Window = std::uint32_t;

    /// Null when the server cannot be reached. `name` as in DISPLAY.
    static std::unique_ptr<XDisplay> connect(const std::string& name);
    XDisplay(const XDisplay&) = delete;
    XDisplay& operator=(const XDisplay&) = delete;
    ~XDisplay();

    /// Becomes readable when `readEvents` has something to do.
    int descriptor() const;
    bool isAlive() const;
    /// The server is a guest of a Wayland session and knows only that session's X programs.
    bool isGuest() const;
    /// A window manager runs that says which window is active.
    bool tellsActive() const;
    /// Nullopt while no window is active.
    std::optional<Window> active() const;
    /// Subscribes to changes of the active window.
    void watchActive();
    /// Takes all waiting events. True when another window may have become active.
    bool readEvents();

    /// The windows of programs, including hidden and minimised ones that the window manager knows; without a window
    /// manager, those on the screen.
    std::vector<Window> windows() const;
    /// The process that opened the window; nullopt when it runs on another machine or has gone.
    std::optional<Pid> owner(Window window) const;
    /// Asks as a click on its close button would. False when the window does not support being asked.
    bool askToClose(Window window);

private:
    enum Name { activeWindow, clientList, supported, supportingCheck, processID, protocols, deleteWindow, nameCount };

    XDisplay(xcb_connection_t* connection, std::uint32_t root);
    void lookUpNames();
    std::vector<std::uint32_t> numbers(Window window, Name property) const;
    std::vector<Window> topLevelWindows() const;
    std::optional<Pid> ownerByConnection(Window window) const;
    bool hasExtension(std::string_view name) const;

    xcb_connection_t* connection_;
    Window root_;
    std::uint32_t names_[nameCount] = {};
    bool knowsOwners_ = false;
};

}  // namespace tolvane::linuxhost
