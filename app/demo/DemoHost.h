#pragma once

#include "platform/Host.h"

namespace tolvane::Demo {

/// The given host with nothing behind it that could touch or show a real process: the demo's pids and applications are
/// made up, and some of this machine may bear the same numbers and names. Preferences, folders and clock stay.
Host inertHost(Host host);

}  // namespace tolvane::Demo
