#pragma once

#include "platform/MemoryPressure.h"
#include "platform/macos/dispatch/DispatchCalls.h"

namespace tolvane::machost {

/// The kernel's own events at warning and critical pressure.
class MacMemoryPressure : public MemoryPressure {
public:
    MacMemoryPressure(Dispatch dispatch, OnMain onMain);

    Subscription onPressure(std::function<void()> pressed) override;

private:
    Dispatch dispatch_;
    OnMain onMain_;
};

}  // namespace tolvane::machost
