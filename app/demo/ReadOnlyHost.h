#pragma once

#include <string>

#include "platform/Host.h"

namespace tolvane {

/// The given host for a run that only looks, such as one that draws pictures while another copy does the work. Rules
/// are paused, no preference is stored, nothing syncs, and the files are copies in `folder`, which exists and is empty.
Host readOnlyHost(Host host, const std::string& folder);

}  // namespace tolvane
