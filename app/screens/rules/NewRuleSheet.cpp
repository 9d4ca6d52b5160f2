#include "app/screens/rules/NewRuleSheet.h"

#include <algorithm>
#include <utility>

#include "app/screens/rules/PatternList.h"

namespace tolvane {

NewRuleSheet::NewRuleSheet(AppModel& model, std::string locale, TargetKind first)
    : kind(first), model_(model), locale_(std::move(locale)) {}

std::vector<RuleSuggestion> NewRuleSheet::suggestions() const {
    if (kind == TargetKind::app) return RuleSuggestions::appSuggestions(model_, locale_);
    if (kind == TargetKind::command) return RuleSuggestions::commandSuggestions(model_, locale_);
    return RuleSuggestions::agentSuggestions(model_, onlyWithoutPrompt, locale_);
}

std::optional<Rule> NewRuleSheet::chosenRule() const {
    if (kind == TargetKind::agent) return RuleSuggestions::agentRule(onlyWithoutPrompt);
    if (const auto text = PatternList::trimmed(typed); kind == TargetKind::command && !text.empty()) {
        return RuleSuggestions::commandRule(std::string(text), PatternList::split(text));
    }
    if (!selection) return std::nullopt;
    const auto entries = suggestions();
    const auto found = std::ranges::find(entries, *selection, &RuleSuggestion::id);
    if (found == entries.end()) return std::nullopt;
    return found->rule;
}

std::optional<Rule> NewRuleSheet::rule() const {
    auto chosen = chosenRule();
    if (chosen) chosen->setMode(RuleMode::logOnly);
    return chosen;
}

std::string NewRuleSheet::line() const {
    if (const auto chosen = rule()) {
        return chosen->name + ". Starts in Log Only, so it only writes what it would do to Activity.";
    }
    return kind == TargetKind::app ? "Choose an app." : "Choose a process or type part of its command line.";
}

void NewRuleSheet::add() {
    if (auto chosen = rule()) model_.addRule(std::move(*chosen));
}

}  // namespace tolvane
