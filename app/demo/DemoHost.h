#pragma once

#include "platform/Host.h"

namespace tolvane::Demo {

/// The given host with nothing behind it that could touch what is real. The demo's pids and applications are made up,
/// and some of this machine may bear the same numbers and names: none is read or acted upon. Files go to a folder of
/// the demo's own, and preferences are read but changed for this run only, so that nobody's rules are overwritten by
/// looking at the demo.
Host inertHost(Host host);

}  // namespace tolvane::Demo
