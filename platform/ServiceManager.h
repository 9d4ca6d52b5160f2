#pragma once

#include <optional>
#include <set>

#include "base/Pid.h"

namespace tolvane {

/// Which processes the host's service manager keeps alive: ending one of them would only bring it back.
/// Any thread; may take a while.
class ServiceManager {
public:
    virtual ~ServiceManager() = default;

    /// None on hosts whose own listing tool is to be asked instead.
    virtual std::optional<std::set<Pid>> managedPIDs() = 0;
};

}  // namespace tolvane
