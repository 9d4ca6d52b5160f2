#pragma once

#include <vector>

#include "base/Date.h"
#include "core/rules/ClaudeRoster.h"
#include "core/sampling/CPULoad.h"
#include "core/sampling/ProcRow.h"
#include "core/sampling/SystemMemory.h"

namespace tolvane {

/// One complete sampling result.
struct Snapshot {
    /// Taken just before the processes were read.
    Date date;
    SystemMemory memory;
    CPULoad cpu;
    /// In the kernel's order.
    std::vector<ProcRow> rows;
    std::vector<ClaudeWorker> claude;

    bool operator==(const Snapshot&) const = default;
};

}  // namespace tolvane
