#include "app/DueDecisions.h"

#include <algorithm>

namespace tolvane {

namespace {

bool wouldChangeNothing(const Decision& decision, const std::map<Pid, Lowered>& lowered) {
    return decision.action() == RuleAction::lowerPriority &&
           std::ranges::all_of(decision.pids, [&](Pid pid) { return lowered.contains(pid); });
}

}  // namespace

std::vector<Decision> DueDecisions::take(const Scene& scene) {
    auto decisions = RuleEngine::decisions(scene.rules, scene.world, scene.now, lastFired_);
    std::erase_if(decisions, [&](const Decision& each) { return wouldChangeNothing(each, scene.lowered); });
    for (const auto& decision : decisions) {
        lastFired_.insert_or_assign(RuleEngine::cooldownKey(decision.rule, decision.subjectKey), scene.now);
    }
    return decisions;
}

}  // namespace tolvane
