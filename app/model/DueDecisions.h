#pragma once

#include <map>
#include <vector>

#include "core/rules/Decision.h"
#include "core/rules/RuleEngine.h"
#include "core/sampling/Priority.h"

namespace tolvane {

/// Which decisions a tick carries out, and when each rule last fired on each subject. The dates are in memory only:
/// after a restart every rule may fire again. Main thread.
class DueDecisions {
public:
    struct Scene {
        const std::vector<Rule>& rules;
        const World& world;
        /// Processes that are at background priority already.
        const std::map<Pid, Lowered>& lowered;
        Date now;
    };

    /// In the order in which they are to begin. Each counts as fired now, whatever comes of it; one that would only
    /// lower what is lowered already is left out and does not count.
    std::vector<Decision> take(const Scene& scene);

private:
    /// Only grows: the engine treats an old date like none.
    RuleEngine::FiredDates lastFired_;
};

}  // namespace tolvane
