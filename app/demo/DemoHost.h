#pragma once

#include "platform/Host.h"

namespace tolvane::Demo {

/// The given host without anything that could touch the real machine. The demo invents its pids and applications, and
/// real ones may have the same numbers and names, so it reads and acts on none of them. Files go to a folder of the
/// demo's own, and changed preferences last for this run only, so looking at the demo overwrites no rules.
Host inertHost(Host host);

}  // namespace tolvane::Demo
