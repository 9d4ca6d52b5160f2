#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/rows/TableRow.h"
#include "core/sampling/ProcRow.h"

namespace tolvane {

/// One application with all its processes.
struct RunningApp {
    /// The identifier that rules know it by.
    std::string id;
    std::string name;
    std::string appPath;
    /// Bytes.
    std::uint64_t memory = 0;

    bool operator==(const RunningApp&) const = default;
};

/// One per identifier, largest memory first, ties by identifier.
std::vector<RunningApp> runningApps(const std::vector<ProcRow>& rows, const RowNames& names);

}  // namespace tolvane
