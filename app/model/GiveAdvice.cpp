#include <QCoroTask>
#include <algorithm>
#include <utility>

#include "app/acts/Outcome.h"
#include "app/model/AppModelPrivate.h"
#include "core/advisor/AdviceScene.h"
#include "core/advisor/Simulators.h"
#include "core/sampling/ProcessReader.h"

namespace tolvane {

void AppModel::Private::giveAdvice() {
    const World world = model.world();
    state.suggestions.set(advisor.suggestions({
        .world = world,
        .memory = model.snapshot->memory,
        .now = model.snapshot->date,
        .ports = [this](const std::vector<Pid>& pids) { return listeningPorts(pids); },
        .locale = host.locale,
        .managed = *model.servicePIDs,
        .simulatorName =
            [this](std::string_view device) {
                return Simulators::name(*host.propertyLists, host.folders->home(), device);
            },
    }));
}

std::map<Pid, std::vector<int>> AppModel::Private::listeningPorts(const std::vector<Pid>& pids) {
    if (!portInspection) portInspection = host.makeInspection();
    return ProcessReader::listeningPorts(*portInspection, pids);
}

/// Compares with the date of the sample that the suggestions come from.
std::vector<Suggestion> AppModel::visibleSuggestions() const {
    std::vector<Suggestion> visible;
    std::ranges::copy_if(*suggestions, std::back_inserter(visible), [this](const Suggestion& each) {
        const auto until = hiddenSuggestions->find(each.id);
        return until == hiddenSuggestions->end() || until->second < snapshot->date;
    });
    return visible;
}

void AppModel::hide(const Suggestion& suggestion, Date until) {
    const Date now = host().clock->now();
    auto hidden = *hiddenSuggestions;
    std::erase_if(hidden, [now](const auto& each) { return each.second <= now; });
    hidden.insert_or_assign(suggestion.id, until);
    state_->hiddenSuggestions.set(std::move(hidden));
}

void AppModel::showHiddenSuggestions() { state_->hiddenSuggestions.set({}); }

QCoro::Task<std::optional<Outcome>> AppModel::act(Suggestion suggestion, std::optional<RuleAction> action) {
    auto others = *suggestions;
    std::erase_if(others, [&](const Suggestion& each) { return each.id == suggestion.id; });
    state_->suggestions.set(std::move(others));
    auto outcome = co_await d_->acts.perform(action.value_or(suggestion.action),
                                             {.title = suggestion.title, .pids = suggestion.pids});
    if (!outcome.failed) co_return std::nullopt;
    co_return outcome;
}

}  // namespace tolvane
