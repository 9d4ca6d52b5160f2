#pragma once

#include "platform/Host.h"
#include "platform/LayeredPreferences.h"
#include "platform/macos/MacCalls.h"

namespace tolvane::machost {

/// The tables of this Mac.
MacCalls appleCalls();

/// This machine. `overrides` are preferences for this run only; `onMain` brings a job to the main thread. Made before
/// or after the application object.
Host makeMacHost(LayeredPreferences::Overrides overrides, const OnMain& onMain);

}  // namespace tolvane::machost
