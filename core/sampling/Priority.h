#pragma once

#include <map>
#include <vector>

#include "base/Date.h"
#include "base/Pid.h"
#include "core/sampling/ProcRow.h"

namespace tolvane {

/// A process whose priority this program lowered, on loan.
struct Lowered {
    /// Start time of the process, which tells it from a later one with its pid.
    Date start;
    /// When it was lowered.
    Date at;

    bool operator==(const Lowered&) const = default;
};

}  // namespace tolvane

/// Background priority as a loan: what was lowered is given back once it is used again.
namespace tolvane::Priority {

/// What became of the lowered processes, each list ascending.
struct Review {
    /// Used since they were lowered.
    std::vector<Pid> restore;
    /// Ended; the pid may be another process's by now, which is not to be touched.
    std::vector<Pid> gone;

    bool operator==(const Review&) const = default;
};

/// Of rows that repeat a pid the first counts.
Review review(const std::map<Pid, Lowered>& lowered, const std::vector<ProcRow>& rows);

}  // namespace tolvane::Priority
