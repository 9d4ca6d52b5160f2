#pragma once

#include <functional>

#include "base/Subscription.h"

namespace tolvane {

/// The windows of this program as the user sees them. Main thread.
class Windows {
public:
    virtual ~Windows() = default;

    /// Whether a window of this program is visible; neither the tray's own nor a covered one counts.
    virtual bool anyVisible() const = 0;
    /// Calls back whenever a window may have become visible or hidden.
    virtual Subscription onChange(std::function<void()> changed) = 0;
};

}  // namespace tolvane
