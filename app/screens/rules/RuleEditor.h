#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/AppModel.h"
#include "app/screens/rules/RuleConditions.h"
#include "app/screens/rules/TargetKind.h"

namespace tolvane {

/// Edits one rule in place: each change goes straight to the model, and so to disk. Changes to a deleted rule are
/// ignored. Main thread.
class RuleEditor {
public:
    static constexpr std::string_view nameLabel = "Name";
    static constexpr std::string_view modeLabel = "Mode";
    static constexpr std::string_view targetLabel = "Applies to";
    static constexpr std::string_view appLabel = "App";
    static constexpr std::string_view chooseApp = "Choose an app";
    static constexpr std::string_view appHint = "Apps are listed by the memory they use now.";
    static constexpr std::string_view commandLabel = "Command contains";
    static constexpr std::string_view commandPrompt = "vite/bin/vite.js, next dev";
    static constexpr std::string_view commandHint =
        "Matches any process whose command line contains one of these. Separate several with commas; case is ignored.";
    static constexpr std::string_view agentLabel = "Agent programs";
    static constexpr std::string_view agentHint =
        "A session is an agent program plus everything it started, such as MCP and language servers. Terminating a "
        "session ends all of them. Claude Code, Codex and Gemini can resume the conversation afterwards.";
    static constexpr std::string_view withoutPromptLabel = "Only Claude Code sessions that never got a prompt";
    static constexpr std::string_view conditionsHeading = "When";
    static constexpr std::string_view unusedLabel = "Unused for";
    static constexpr std::string_view memoryLabel = "Using more than";
    static constexpr std::string_view tightLabel = "Only when memory is tight";
    static constexpr std::string_view actionLabel = "Then";
    static constexpr std::string_view deleteRule = "Delete Rule";

    /// `model` outlives the editor. `locale` is an ICU identifier.
    RuleEditor(AppModel& model, UUID rule, std::string locale);

    const UUID& id() const { return id_; }
    /// Null when the rule is deleted.
    const Rule* rule() const;
    TargetKind kind() const;

    void setName(std::string name);
    /// Also asks for permission to show notifications, except for "Off".
    void setMode(RuleMode mode);
    /// A new kind starts with an empty target, or with all agents. An action that it does not offer becomes "Notify".
    void setKind(TargetKind kind);
    /// Ignores an application that is not in `appChoices`.
    void setApp(std::string_view appID);
    void setOnlyWithoutPrompt(bool only);
    void setUnusedMinutes(std::optional<std::int64_t> minutes);
    void setMemoryMB(std::optional<std::int64_t> limit);
    void setOnlyWhenTight(bool only);
    void setAction(RuleAction action);
    void deleteIt();

    /// The text of the patterns or names. `savePatterns` writes it to the rule when the user leaves the field.
    const std::string& patterns() const { return patterns_; }
    void setPatterns(std::string text) { patterns_ = std::move(text); }
    void savePatterns();

    struct AppChoice {
        std::string appID;
        std::string title;

        bool operator==(const AppChoice&) const = default;
    };
    /// The running applications, then the rule's own if it is not running. Starts with "Choose an app" while none is
    /// chosen.
    std::vector<AppChoice> appChoices() const;
    std::vector<RuleConditions::Choice> unusedChoices() const;
    std::vector<RuleConditions::Choice> memoryChoices() const;
    /// The text below the conditions.
    std::string footer() const;
    bool onlyWithoutPrompt() const;
    /// Whether this machine records which sessions got a prompt.
    static bool offersWithoutPrompt(const AppModel& model);

private:
    template <typename Function>
    void change(Function change);
    void showPatterns();

    AppModel& model_;
    UUID id_;
    std::string locale_;
    std::string patterns_;
};

}  // namespace tolvane
