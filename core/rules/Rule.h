#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/UUID.h"
#include "core/rules/RuleAction.h"
#include "core/rules/RuleMode.h"

namespace tolvane {

/// One application, with all its processes as one subject.
struct AppTarget {
    std::string appID;
    std::string name;
    bool operator==(const AppTarget&) const = default;
};

/// Every process whose command line contains one of the patterns, each its own subject.
struct CommandTarget {
    std::vector<std::string> patterns;
    bool operator==(const CommandTarget&) const = default;
};

/// As an `AgentSessionTarget` of "claude" without a prompt; kept for files written before that existed.
struct EmptyClaudeSessionTarget {
    bool operator==(const EmptyClaudeSessionTarget&) const = default;
};

/// Sessions of AI agents that run under one of the names.
struct AgentSessionTarget {
    std::vector<std::string> names;
    bool onlyWithoutPrompt = false;
    bool operator==(const AgentSessionTarget&) const = default;
};

using RuleTarget = std::variant<AppTarget, CommandTarget, EmptyClaudeSessionTarget, AgentSessionTarget>;

/// What to do to which processes under which conditions.
struct Rule {
    UUID id;
    std::string name;
    bool enabled = false;
    /// Only logs what it would do.
    bool dryRun = true;
    RuleTarget target;
    /// Condition: unused for at least so many minutes.
    std::optional<std::int64_t> unusedMinutes;
    /// Condition: using at least so many binary megabytes.
    std::optional<std::int64_t> memoryMB;
    RuleAction action = RuleAction::notify;
    /// A further gate: acts only while memory is tight. No condition by itself.
    std::optional<bool> onlyWhenTight;

    /// The agents that are known by name, as a new agent rule starts with.
    static constexpr std::array<std::string_view, 9> defaultAgentNames = {
        "claude", "codex", "gemini", "opencode", "aider", "goose", "cursor-agent", "amp", "copilot"};

    /// What a first start offers: five rules, all off. Their ids are new in each run and stay the same within it.
    static const std::vector<Rule>& presets();

    bool hasCondition() const { return unusedMinutes.has_value() || memoryMB.has_value(); }
    /// `memoryMB` in bytes, or as many as there can be. A limit below none is never passed: none.
    std::optional<std::uint64_t> memoryLimit() const;

    RuleMode mode() const;
    /// Off is log-only as well, so that a rule that is turned on by hand in the file does no harm.
    void setMode(RuleMode mode);

    bool operator==(const Rule&) const = default;
};

}  // namespace tolvane
