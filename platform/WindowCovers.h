#pragma once

#include <cstdint>
#include <functional>

#include "base/Subscription.h"

namespace tolvane {

/// Whether windows of this program are covered altogether by those of others, where only the window system knows. Main
/// thread.
class WindowCovers {
public:
    /// A window by the number that the window system gave it.
    using Window = std::uint64_t;

    virtual ~WindowCovers() = default;

    /// Listens to news of this window from now on. False when nobody tells of it.
    virtual bool watch(Window window) = 0;
    /// The window is gone.
    virtual void forget(Window window) = 0;
    /// False for one that is not watched.
    virtual bool isCovered(Window window) const = 0;
    /// Calls back whenever a window was covered or came into view.
    virtual Subscription onChange(std::function<void()> changed) = 0;
};

}  // namespace tolvane
