#pragma once

#include "platform/Host.h"
#include "platform/LayeredPreferences.h"
#include "platform/macos/UnifiedLog.h"
#include "platform/macos/dispatch/DispatchCalls.h"
#include "platform/macos/kernel/KernelCalls.h"
#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// All that the host asks of the system, in four tables.
struct MacCalls {
    Kernel kernel;
    ObjC runtime;
    Dispatch dispatch;
    LogCalls log;
};

/// The host on top of these tables. `overrides` are preferences for this run only; `onMain` brings a job to the thread
/// that the host is used on. Main thread.
Host hostOn(const MacCalls& calls, LayeredPreferences::Overrides overrides, const OnMain& onMain);

}  // namespace tolvane::machost
