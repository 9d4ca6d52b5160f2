#pragma once

#include <optional>
#include <string>

#include "base/Pid.h"
#include "platform/linux/processes/ProcStat.h"

namespace tolvane::linuxhost {

/// A process's stat line, read afresh and without the name, which would be a view. None for one that is gone.
std::optional<ProcStat> readProcStat(const std::string& proc, Pid pid);

}  // namespace tolvane::linuxhost
