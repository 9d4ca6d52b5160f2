#pragma once

#include <array>
#include <string_view>

namespace tolvane {

enum class RuleAction { notify, terminate, quit, relaunch, lowerPriority };

namespace RuleActions {

/// In the order in which they are offered.
inline constexpr std::array allCases = {RuleAction::notify, RuleAction::terminate, RuleAction::quit,
                                        RuleAction::relaunch, RuleAction::lowerPriority};

constexpr std::string_view title(RuleAction action) {
    switch (action) {
        case RuleAction::notify:
            return "Notify";
        case RuleAction::terminate:
            return "Terminate";
        case RuleAction::quit:
            return "Quit";
        case RuleAction::relaunch:
            return "Relaunch";
        case RuleAction::lowerPriority:
            return "Lower Priority";
    }
    return {};
}

}  // namespace RuleActions

}  // namespace tolvane
