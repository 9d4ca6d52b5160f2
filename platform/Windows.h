#pragma once

#include <functional>

#include "base/Subscription.h"

namespace tolvane {

/// The windows of this program as the user sees them. Main thread.
class Windows {
public:
    virtual ~Windows() = default;

    /// Whether a window of this program can be seen; the tray's own does not count, a covered one neither.
    virtual bool anyVisible() const = 0;
    /// Calls back whenever a window may have come into view or gone out of it.
    virtual Subscription onChange(std::function<void()> changed) = 0;
};

}  // namespace tolvane
