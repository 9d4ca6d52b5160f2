#pragma once

#include "platform/ServiceManager.h"

namespace tolvane::machost {

/// launchd has no interface for this, so its own listing tool is run.
class LaunchdServices : public ServiceManager {
public:
    std::optional<std::set<Pid>> managedPIDs() override { return std::nullopt; }
};

}  // namespace tolvane::machost
