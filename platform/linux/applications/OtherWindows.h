#pragma once

#include <cstddef>
#include <set>
#include <string>

#include "base/Pid.h"

namespace tolvane::linuxhost {

/// Whose windows are meant. X11 knows windows by process, Wayland by application.
struct WindowOwner {
    std::set<Pid> pids;
    /// The desktop entry's name.
    std::string identifier;

    bool operator==(const WindowOwner&) const = default;
};

/// The windows of other programs. Main thread; each call is a few round trips to the display server at most.
class OtherWindows {
public:
    virtual ~OtherWindows() = default;

    /// False in sessions that keep every program's windows to themselves: then no window is not "none".
    virtual bool canTell() = 0;
    virtual bool any(const WindowOwner& owner) = 0;
    /// As clicks on their close buttons. How many were asked.
    virtual std::size_t askToClose(const WindowOwner& owner) = 0;
};

}  // namespace tolvane::linuxhost
