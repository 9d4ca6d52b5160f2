#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <variant>
#include <vector>

#include "base/UUID.h"
#include "core/json/Fields.h"

namespace tolvane {

enum class RuleAction { notify, terminate, quit, relaunch, lowerPriority };

namespace RuleActions {

/// In the order in which the editor offers them.
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

/// How far a rule may go: computed from `enabled` and `dryRun`, never stored.
enum class RuleMode { off, logOnly, on };

/// One application. All its processes are one subject.
struct AppTarget {
    std::string appID;
    std::string name;
    bool operator==(const AppTarget&) const = default;
};

/// Every process whose command line contains one of the patterns. Each is a subject of its own.
struct CommandTarget {
    std::vector<std::string> patterns;
    bool operator==(const CommandTarget&) const = default;
};

/// Equals an `AgentSessionTarget` for "claude" without a prompt. Kept for files written before that existed.
struct EmptyClaudeSessionTarget {
    bool operator==(const EmptyClaudeSessionTarget&) const = default;
};

/// Sessions of AI agents that go by one of the names.
struct AgentSessionTarget {
    std::vector<std::string> names;
    bool onlyWithoutPrompt = false;
    bool operator==(const AgentSessionTarget&) const = default;
};

using RuleTarget = std::variant<AppTarget, CommandTarget, EmptyClaudeSessionTarget, AgentSessionTarget>;

/// What to do to which processes, and when.
struct Rule {
    UUID id;
    std::string name;
    bool enabled = false;
    /// Only logs what the rule would do.
    bool dryRun = true;
    RuleTarget target;
    /// Condition: unused for at least this many minutes.
    std::optional<std::int64_t> unusedMinutes;
    /// Condition: using at least this many binary megabytes.
    std::optional<std::int64_t> memoryMB;
    RuleAction action = RuleAction::notify;
    /// A further gate: act only while memory is tight. Not a condition by itself.
    std::optional<bool> onlyWhenTight;

    /// The known agents; a new agent rule starts with these names.
    static constexpr std::array<std::string_view, 9> defaultAgentNames = {
        "claude", "codex", "gemini", "opencode", "aider", "goose", "cursor-agent", "amp", "copilot"};

    /// The five rules that a first start offers, all off. Their ids are new in each run and fixed within it.
    static const std::vector<Rule>& presets();

    bool hasCondition() const { return unusedMinutes.has_value() || memoryMB.has_value(); }
    /// `memoryMB` in bytes, capped at the largest number. Returns nullopt for a negative limit.
    std::optional<std::uint64_t> memoryLimit() const;

    RuleMode mode() const;
    /// Off also sets log-only, so that a rule enabled by hand in the file does no harm.
    void setMode(RuleMode mode);

    bool operator==(const Rule&) const = default;
};

}  // namespace tolvane

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
