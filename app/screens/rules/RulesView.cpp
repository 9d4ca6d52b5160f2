#include "app/screens/rules/RulesView.h"

#include <algorithm>

#include "app/screens/rules/RuleModeTraits.h"
#include "app/screens/rules/RuleStatus.h"
#include "app/screens/rules/RuleSummary.h"
#include "core/rules/RuleEngine.h"

namespace tolvane {

std::vector<RuleRow> RulesView::rows(const AppModel& model, std::string_view locale) {
    const auto world = model.world();
    std::vector<RuleRow> rows;
    rows.reserve(model.rules->size());
    for (const auto& rule : *model.rules) {
        rows.push_back({.id = rule.id,
                        .name = rule.name,
                        .summary = summaryOf(rule, locale),
                        .status = RuleStatus::of(rule, world, model.snapshot->date).line(),
                        .mode = traits(rule.mode()).title,
                        .isOn = rule.mode() == RuleMode::on});
    }
    return rows;
}

std::optional<std::string_view> RulesView::notice(const AppModel& model) {
    if (model.knowsFrontmost()) return std::nullopt;
    if (!std::ranges::any_of(*model.rules, RuleEngine::needsFrontmost)) return std::nullopt;
    return heldBack;
}

std::vector<Rule> RulesView::rulesOf(const AppModel& model, const std::set<UUID>& ids) {
    std::vector<Rule> found;
    std::ranges::copy_if(*model.rules, std::back_inserter(found),
                         [&ids](const Rule& rule) { return ids.contains(rule.id); });
    return found;
}

const Rule* RulesView::find(const std::vector<Rule>& rules, const UUID& id) {
    const auto found = std::ranges::find(rules, id, &Rule::id);
    return found == rules.end() ? nullptr : &*found;
}

const Rule* RulesView::selected(const AppModel& model) {
    const auto& id = *model.selectedRule;
    return id ? find(*model.rules, *id) : nullptr;
}

}  // namespace tolvane
