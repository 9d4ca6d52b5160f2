#pragma once

#include "platform/Host.h"
#include "platform/macos/dispatch/DispatchCalls.h"
#include "platform/macos/kernel/KernelCalls.h"
#include "platform/macos/objc/Runtime.h"
#include "platform/macos/session/UnifiedLog.h"

namespace tolvane::machost {

/// Everything the host asks of the system, in four tables.
struct MacCalls {
    Kernel kernel;
    ObjC runtime;
    Dispatch dispatch;
    LogCalls log;
};

/// The host on top of these tables. `layer` goes over the stored preferences; `onMain` runs a job on the thread that
/// uses the host. Main thread.
Host hostOn(const MacCalls& calls, const PreferencesLayer& layer, const OnMain& onMain);

}  // namespace tolvane::machost
