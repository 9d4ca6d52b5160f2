#include "app/screens/rules/RuleStatus.h"

#include "core/rules/RuleEngine.h"

namespace tolvane {

RuleStatus RuleStatus::of(const Rule& rule, const World& world, Date now) {
    RuleStatus status{.matches = RuleEngine::candidates(rule, world)};
    Rule asked = rule;
    asked.enabled = true;
    for (auto& decision : RuleEngine::decisions({asked}, world, now, {})) {
        status.due.insert(std::move(decision.subjectKey));
    }
    return status;
}

std::optional<std::string> RuleStatus::line() const {
    if (matches.empty()) return std::nullopt;
    auto text = matches.size() == 1 ? "1 match running" : std::to_string(matches.size()) + " matches running";
    if (!due.empty()) text += ", " + std::to_string(due.size()) + " past the limit";
    return text;
}

}  // namespace tolvane
