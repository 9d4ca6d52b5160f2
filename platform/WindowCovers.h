#pragma once

#include <cstdint>
#include <functional>

#include "base/Subscription.h"

namespace tolvane {

/// Whether other windows completely cover those of this program, where only the window system knows. Main thread.
class WindowCovers {
public:
    /// The window system's number of a window.
    using Window = std::uint64_t;

    virtual ~WindowCovers() = default;

    /// Watches this window from now on. False when the window system does not report it.
    virtual bool watch(Window window) = 0;
    /// Ends the watch of a window that is gone.
    virtual void forget(Window window) = 0;
    /// False for a window that is not watched.
    virtual bool isCovered(Window window) const = 0;
    /// Calls back whenever a watched window was covered or came into view.
    virtual Subscription onChange(std::function<void()> changed) = 0;
};

}  // namespace tolvane
