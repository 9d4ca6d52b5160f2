#pragma once

#include <array>
#include <string_view>
#include <tuple>
#include <utility>

#include "core/json/Fields.h"
#include "core/rules/Rule.h"

namespace tolvane::json {

template <>
struct Texts<RuleAction> {
    static constexpr std::array texts = {
        std::pair{RuleAction::notify, std::string_view("notify")},
        std::pair{RuleAction::terminate, std::string_view("terminate")},
        std::pair{RuleAction::quit, std::string_view("quit")},
        std::pair{RuleAction::relaunch, std::string_view("relaunch")},
        std::pair{RuleAction::lowerPriority, std::string_view("lowerPriority")},
    };
};

template <>
struct Fields<AppTarget> {
    static constexpr auto fields = std::tuple(Field{"bundleID", &AppTarget::appID}, Field{"name", &AppTarget::name});
};
template <>
struct Fields<CommandTarget> {
    static constexpr auto fields = std::tuple(Field{"patterns", &CommandTarget::patterns});
};
template <>
struct Fields<EmptyClaudeSessionTarget> {
    static constexpr std::tuple<> fields{};
};
template <>
struct Fields<AgentSessionTarget> {
    static constexpr auto fields = std::tuple(Field{"names", &AgentSessionTarget::names},
                                              Field{"onlyWithoutPrompt", &AgentSessionTarget::onlyWithoutPrompt});
};
template <>
struct Cases<RuleTarget> {
    static constexpr std::array<std::string_view, 4> names = {"app", "command", "emptyClaudeSession", "agentSession"};
};

template <>
struct Fields<Rule> {
    static constexpr auto fields =
        std::tuple(Field{"id", &Rule::id}, Field{"name", &Rule::name}, Field{"enabled", &Rule::enabled},
                   Field{"dryRun", &Rule::dryRun}, Field{"target", &Rule::target},
                   Field{"unusedMinutes", &Rule::unusedMinutes}, Field{"memoryMB", &Rule::memoryMB},
                   Field{"action", &Rule::action}, Field{"onlyWhenTight", &Rule::onlyWhenTight});
};

}  // namespace tolvane::json
