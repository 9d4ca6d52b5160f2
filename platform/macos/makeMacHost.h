#pragma once

#include "platform/Host.h"
#include "platform/macos/MacCalls.h"

namespace tolvane::machost {

/// The tables of this Mac.
MacCalls appleCalls();

/// This machine. `layer` goes over the stored preferences; `onMain` runs a job on the main thread. Made before or after
/// the application object.
Host makeMacHost(const PreferencesLayer& layer, const OnMain& onMain);

}  // namespace tolvane::machost
