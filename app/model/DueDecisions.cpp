#include "app/model/DueDecisions.h"

#include <algorithm>

namespace tolvane {

namespace {

bool wouldChangeNothing(const Decision& decision, const std::map<Pid, Lowered>& lowered) {
    return decision.action() == RuleAction::lowerPriority &&
           std::ranges::all_of(decision.pids, [&](Pid pid) { return lowered.contains(pid); });
}

/// After the clock was set back, a firing in the future counts as now: the rule must not wait until the clock catches
/// up.
void endWithNow(RuleEngine::FiredDates& fired, Date now) {
    for (auto& [key, date] : fired) date = std::min(date, now);
}

}  // namespace

std::vector<Decision> DueDecisions::take(const Scene& scene) {
    endWithNow(lastFired_, scene.now);
    auto decisions = RuleEngine::decisions(scene.rules, scene.world, scene.now, lastFired_);
    std::erase_if(decisions, [&](const Decision& each) { return wouldChangeNothing(each, scene.lowered); });
    for (const auto& decision : decisions) {
        lastFired_.insert_or_assign(RuleEngine::cooldownKey(decision.rule, decision.subjectKey), scene.now);
    }
    return decisions;
}

}  // namespace tolvane
