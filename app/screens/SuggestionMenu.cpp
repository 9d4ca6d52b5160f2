#include "app/screens/SuggestionMenu.h"

#include <QCoroTask>
#include <set>

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
    if (includesPrimary) items.push_back({primaryLabel(suggestion), SuggestionDeed::primary});
    if (suggestion.bundlePath && suggestion.action != RuleAction::quit) {
        items.push_back({"Quit " + suggestion.title, SuggestionDeed::quit});
    }
    if (!suggestion.bundlePath && suggestion.kind != Suggestion::Kind::simulator) {
        items.push_back({"Lower Priority", SuggestionDeed::lowerPriority});
    }
    if (includesPrimary && suggestion.rule) items.push_back({std::string(makeRule), SuggestionDeed::makeRule});
    items.push_back({});
    items.push_back({"Snooze for a Day", SuggestionDeed::snooze});
    items.push_back({"Ignore", SuggestionDeed::ignore});
    return items;
}

Lives livesOf(const std::vector<Suggestion>& suggestions, const std::vector<ProcRow>& rows) {
    std::set<Pid> wanted;
    for (const auto& each : suggestions) wanted.insert(each.pids.begin(), each.pids.end());
    Lives lives;
    for (const auto& row : rows) {
        if (wanted.contains(row.id())) lives.emplace(row.id(), row.sample.startTime);
    }
    return lives;
}

Suggestion stillMeant(Suggestion suggestion, const Lives& shown, const std::vector<ProcRow>& rows) {
    const auto now = livesOf({suggestion}, rows);
    std::erase_if(suggestion.pids, [&](Pid pid) {
        const auto before = shown.find(pid), present = now.find(pid);
        return before != shown.end() && present != now.end() && before->second != present->second;
    });
    return suggestion;
}

void carryOut(AppModel& model, const Suggestion& suggestion, SuggestionDeed deed) {
    switch (deed) {
        case SuggestionDeed::primary:
            static_cast<void>(model.act(suggestion));
            break;
        case SuggestionDeed::quit:
            static_cast<void>(model.act(suggestion, RuleAction::quit));
            break;
        case SuggestionDeed::lowerPriority:
            static_cast<void>(model.act(suggestion, RuleAction::lowerPriority));
            break;
        case SuggestionDeed::makeRule:
            if (suggestion.rule) model.addRule(*suggestion.rule);
            break;
        case SuggestionDeed::snooze:
            model.hide(suggestion, model.host().clock->now() + day);
            break;
        case SuggestionDeed::ignore:
            model.hide(suggestion, distantFuture);
            break;
    }
}

}  // namespace tolvane::SuggestionMenu
