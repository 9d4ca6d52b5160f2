#pragma once

#include "platform/macos/session/UnifiedLog.h"

namespace tolvane::machost {

/// The unified log of this Mac.
LogCalls appleLog();

}  // namespace tolvane::machost
