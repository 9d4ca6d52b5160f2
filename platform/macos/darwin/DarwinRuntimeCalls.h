#pragma once

#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// The Objective-C runtime of this process.
ObjC appleRuntime();

}  // namespace tolvane::machost
