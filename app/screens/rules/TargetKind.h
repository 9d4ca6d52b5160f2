#pragma once

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "core/rules/Rule.h"

namespace tolvane {

/// The kinds of targets that a rule can watch, as the pickers offer them.
enum class TargetKind { app, command, agent };

struct TargetKindTraits {
    TargetKind kind;
    std::string_view rawValue;
    std::string_view title;
};

inline constexpr std::array<TargetKindTraits, 3> targetKinds = {{
    {TargetKind::app, "app", "An app"},
    {TargetKind::command, "command", "A command"},
    {TargetKind::agent, "agent", "AI agent sessions"},
}};

TargetKind kindOf(const RuleTarget& target);
/// In the order of the picker.
std::span<const RuleAction> actionsFor(TargetKind kind);

inline bool allows(TargetKind kind, RuleAction action) {
    const auto offered = actionsFor(kind);
    return std::ranges::find(offered, action) != offered.end();
}

}  // namespace tolvane
