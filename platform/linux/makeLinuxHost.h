#pragma once

#include "platform/Host.h"
#include "platform/LayeredPreferences.h"
#include "platform/linux/Environment.h"

namespace tolvane::linuxhost {

/// This machine. `overrides` are preferences for this run only. Made before or after the application object; what waits
/// for events needs the event loop from the first subscription on.
Host makeLinuxHost(const Environment& environment, LayeredPreferences::Overrides overrides);

}  // namespace tolvane::linuxhost
