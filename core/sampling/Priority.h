#pragma once

#include <map>
#include <vector>

#include "base/Date.h"
#include "base/Pid.h"
#include "core/sampling/ProcRow.h"

namespace tolvane {

/// A process whose priority this program lowered and owes it.
struct Lowered {
    /// Start time of the process, since another one may get its pid.
    Date start;
    /// When it was lowered.
    Date at;

    bool operator==(const Lowered&) const = default;
};

}  // namespace tolvane

/// Background priority is a loan: a process gets its own back once it is used again.
namespace tolvane::Priority {

/// What became of the lowered processes. Both lists are sorted.
struct Review {
    /// Used since they were lowered.
    std::vector<Pid> restore;
    /// Ended. Another process may have the pid by now and must not be touched.
    std::vector<Pid> gone;

    bool operator==(const Review&) const = default;
};

/// Of rows that repeat a pid the first one counts.
Review review(const std::map<Pid, Lowered>& lowered, const std::vector<ProcRow>& rows);

}  // namespace tolvane::Priority
