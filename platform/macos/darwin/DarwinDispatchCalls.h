#pragma once

#include "platform/macos/dispatch/DispatchCalls.h"

namespace tolvane::machost {

/// The event sources of this Mac, on one serial queue.
Dispatch appleDispatch();

}  // namespace tolvane::machost
