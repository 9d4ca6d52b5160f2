#pragma once

#include <QCoroTask>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/acts/Outcome.h"
#include "app/model/AppModel.h"

namespace tolvane {

/// What the user can do with a suggestion.
enum class SuggestionAction { primary, quit, lowerPriority, makeRule, snooze, ignore };

/// One entry of a suggestion's menu; without an action it is a divider.
struct SuggestionMenuItem {
    std::string title;
    std::optional<SuggestionAction> action;

    bool operator==(const SuggestionMenuItem&) const = default;
};

namespace SuggestionMenu {

inline constexpr std::string_view makeRule = "Make Rule";
inline constexpr std::string_view makeRuleHelp =
    "Adds a rule in Log Only, so it writes what it would do to Activity first";

/// What the main button does, in a word or two.
std::string primaryLabel(const Suggestion& suggestion);
std::vector<SuggestionMenuItem> items(const Suggestion& suggestion, bool includesPrimary);
/// Does it. What ends processes goes on beside the caller. Gives what did not come off.
QCoro::Task<std::optional<Outcome>> carryOut(AppModel& model, Suggestion suggestion, SuggestionAction action);

}  // namespace SuggestionMenu

}  // namespace tolvane
