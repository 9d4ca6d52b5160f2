#include "app/screens/suggestions/SuggestionMenu.h"

#include <QCoroTask>

namespace tolvane::SuggestionMenu {

namespace {

constexpr Seconds day{86'400};

}  // namespace

std::string primaryLabel(const Suggestion& suggestion) {
    if (suggestion.kind == Suggestion::Kind::simulator) return "Shut Down";
    if (suggestion.kind == Suggestion::Kind::duplicate) {
        return suggestion.pids.size() == 1 ? "Stop Old Copy" : "Stop Old Copies";
    }
    if (suggestion.action == RuleAction::quit) return "Quit";
    return suggestion.action == RuleAction::relaunch ? "Restart" : "Stop";
}

std::vector<SuggestionMenuItem> items(const Suggestion& suggestion, bool includesPrimary) {
    std::vector<SuggestionMenuItem> items;
    if (includesPrimary) items.push_back({primaryLabel(suggestion), SuggestionAction::primary});
    if (suggestion.appPath && suggestion.action != RuleAction::quit) {
        items.push_back({"Quit " + suggestion.title, SuggestionAction::quit});
    }
    if (!suggestion.appPath && suggestion.kind != Suggestion::Kind::simulator) {
        items.push_back({"Lower Priority", SuggestionAction::lowerPriority});
    }
    if (includesPrimary && suggestion.rule) items.push_back({std::string(makeRule), SuggestionAction::makeRule});
    items.push_back({});
    items.push_back({"Snooze for a Day", SuggestionAction::snooze});
    items.push_back({"Ignore", SuggestionAction::ignore});
    return items;
}

QCoro::Task<std::optional<Outcome>> carryOut(AppModel& model, Suggestion suggestion, SuggestionAction action) {
    switch (action) {
        case SuggestionAction::primary:
            co_return co_await model.act(std::move(suggestion));
        case SuggestionAction::quit:
            co_return co_await model.act(std::move(suggestion), RuleAction::quit);
        case SuggestionAction::lowerPriority:
            co_return co_await model.act(std::move(suggestion), RuleAction::lowerPriority);
        case SuggestionAction::makeRule:
            if (suggestion.rule) model.addRule(*suggestion.rule);
            break;
        case SuggestionAction::snooze:
            model.hide(suggestion, model.now() + day);
            break;
        case SuggestionAction::ignore:
            model.hide(suggestion, distantFuture);
            break;
    }
    co_return std::nullopt;
}

}  // namespace tolvane::SuggestionMenu
