#pragma once

#include <cstddef>
#include <set>
#include <string>

#include "base/Pid.h"

namespace tolvane::linuxhost {

/// The owner of windows. X11 knows windows by process, Wayland by application.
struct WindowOwner {
    std::set<Pid> pids;
    /// The identifier of the desktop entry.
    std::string identifier;

    bool operator==(const WindowOwner&) const = default;
};

/// The windows of other programs. Main thread; each call takes at most a few round trips to the display server.
class OtherWindows {
public:
    virtual ~OtherWindows() = default;

    /// False in sessions that do not show a program the windows of others: then finding no window proves nothing.
    virtual bool canTell() = 0;
    virtual bool any(const WindowOwner& owner) = 0;
    /// Asks windows to close, as their close buttons do. Returns how many were asked.
    virtual std::size_t askToClose(const WindowOwner& owner) = 0;
};

}  // namespace tolvane::linuxhost
