#pragma once

#include <functional>
#include <memory>

#include "platform/Host.h"
#include "platform/LayeredPreferences.h"
#include "platform/linux/Environment.h"

namespace tolvane::linuxhost {

/// The readers of processes, and the dates that they give start times: whoever acts must know a process by the same.
struct ProcessReading {
    std::function<std::unique_ptr<ProcessInspection>()> makeInspection;
    std::function<Date(std::uint64_t ticksAfterBoot)> dateOfTicks;
};

/// This machine. `overrides` are preferences for this run only. Made before or after the application object; what waits
/// for events needs the event loop from the first subscription on.
Host makeLinuxHost(const Environment& environment, LayeredPreferences::Overrides overrides, ProcessReading reading);

}  // namespace tolvane::linuxhost
