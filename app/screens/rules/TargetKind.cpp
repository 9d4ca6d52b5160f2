#include "app/screens/rules/TargetKind.h"

#include <variant>

namespace tolvane {

namespace {

constexpr std::array appActions = {RuleAction::notify, RuleAction::quit, RuleAction::relaunch};
constexpr std::array processActions = {RuleAction::notify, RuleAction::lowerPriority, RuleAction::terminate};

}  // namespace

TargetKind kindOf(const RuleTarget& target) {
    if (std::holds_alternative<AppTarget>(target)) return TargetKind::app;
    if (std::holds_alternative<CommandTarget>(target)) return TargetKind::command;
    return TargetKind::agent;
}

std::span<const RuleAction> actionsFor(TargetKind kind) {
    if (kind == TargetKind::app) return appActions;
    return processActions;
}

}  // namespace tolvane
