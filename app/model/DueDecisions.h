#pragma once

#include <map>
#include <vector>

#include "core/rules/Decision.h"
#include "core/rules/RuleEngine.h"
#include "core/sampling/Priority.h"

namespace tolvane {

/// Chooses the decisions that a tick carries out, and remembers when each rule last fired on each subject. The dates
/// live in memory only: after a restart every rule may fire again. Main thread.
class DueDecisions {
public:
    struct Scene {
        const std::vector<Rule>& rules;
        const World& world;
        /// Processes that are at background priority already.
        const std::map<Pid, Lowered>& lowered;
        Date now;
    };

    /// In the order in which they are to begin. Each counts as fired now, whatever its outcome. Leaves out decisions
    /// that would only lower what is already lowered; those do not count as fired.
    std::vector<Decision> take(const Scene& scene);

private:
    /// Never shrinks: the engine treats an old date like no date.
    RuleEngine::FiredDates lastFired_;
};

}  // namespace tolvane
