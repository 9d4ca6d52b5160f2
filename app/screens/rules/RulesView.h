#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/AppModel.h"
#include "app/screens/Question.h"
#include "core/rules/Rule.h"

namespace tolvane {

/// One row of the list of rules.
struct RuleRow {
    UUID id;
    std::string name;
    std::string summary;
    /// What the rule matches now; nullopt without matches.
    std::optional<std::string> status;
    /// The text of the tag, and whether it is green.
    std::string_view mode;
    bool isOn = false;

    bool operator==(const RuleRow&) const = default;
};

/// The rules screen without its editor. Main thread.
struct RulesView {
    static constexpr std::string_view addRule = "Add Rule";
    static constexpr std::string_view addIcon = "plus";
    static constexpr std::string_view shareRules = "Share Rules";
    static constexpr std::string_view shareIcon = "square.and.arrow.up";
    static constexpr std::string_view exportRow = "Export…";
    static constexpr std::string_view deleteRow = "Delete";
    static constexpr std::string_view listName = "Rules";
    static constexpr std::string_view noSelectionTitle = "No Rule Selected";
    static constexpr std::string_view noSelectionIcon = "slider.horizontal.3";
    static constexpr std::string_view noSelectionText =
        "Rules stop or restart processes that sit unused or grow too large. A new rule only logs what it would do "
        "until you turn it on.";
    /// Shown on hosts that do not report which application is in front.
    static constexpr std::string_view heldBack =
        "This desktop does not tell which app is in front, so rules that quit or relaunch apps hold back.";

    /// In stored order. `locale` is an ICU identifier.
    static std::vector<RuleRow> rows(const AppModel& model, std::string_view locale);
    /// Set while it concerns any rule.
    static std::optional<std::string_view> notice(const AppModel& model);

    /// Asked before a key deletes a rule.
    static Question deleteQuestion(const Rule& rule) {
        return {.title = "Delete “" + rule.name + "”?", .action = std::string(deleteRow)};
    }

    static std::vector<Rule> rulesOf(const AppModel& model, const std::set<UUID>& ids);
    static const Rule* find(const std::vector<Rule>& rules, const UUID& id);
    /// The rule that the editor shows; null without a selection, or when the selected rule is gone.
    static const Rule* selected(const AppModel& model);
};

}  // namespace tolvane
