#pragma once

#include <functional>

#include "base/Subscription.h"

namespace tolvane {

/// Events of memory pressure, warning and critical alike. Main thread.
class MemoryPressure {
public:
    virtual ~MemoryPressure() = default;

    /// Calls back at each event. A host without such events never calls.
    virtual Subscription onPressure(std::function<void()> pressed) = 0;
};

}  // namespace tolvane
