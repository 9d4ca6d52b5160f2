#pragma once

#include <set>

#include "base/Pid.h"

namespace tolvane {

/// Which processes the host's service manager keeps alive: ending one of them would only bring it back.
/// Any thread; may take a while.
class ServiceManager {
public:
    virtual ~ServiceManager() = default;

    /// Empty when nothing can be learned.
    virtual std::set<Pid> managedPIDs() = 0;
};

}  // namespace tolvane
