#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Pid.h"
#include "core/rules/ClaudeRoster.h"
#include "core/sampling/ProcRow.h"

namespace tolvane {

/// What rules and advice see of one moment.
struct World {
    /// All processes, in the reader's order.
    std::vector<ProcRow> rows;
    std::optional<std::string> frontmostAppID;
    std::vector<ClaudeWorker> claudeWorkers;
    /// This program's own process.
    Pid selfPID = 0;
    /// The user this program runs as.
    std::uint32_t uid = 0;
    bool memoryTight = false;
    /// Whether the host can tell which application is in front. If not, nothing ends an application: it may be the one
    /// in use.
    bool frontmostKnown = true;

    /// Whether rules and advice may ever act on the process.
    bool mayTouch(const ProcSample& sample) const { return sample.mayBeTouchedBy(selfPID, uid); }
    /// Whether the row belongs to the application in front.
    bool isInFront(const ProcRow& row) const { return row.appID && frontmostAppID && *row.appID == *frontmostAppID; }

    bool operator==(const World&) const = default;
};

}  // namespace tolvane
