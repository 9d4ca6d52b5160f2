#pragma once

#include "platform/macos/kernel/KernelCalls.h"
#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// The kernel of this Mac; the runtime is asked for the number of active cores.
Kernel processKernel(const ObjC& runtime);

}  // namespace tolvane::machost
