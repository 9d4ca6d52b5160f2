#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/AppModel.h"
#include "app/screens/rules/RuleSuggestion.h"
#include "app/screens/rules/TargetKind.h"

namespace tolvane {

/// The sheet that makes a rule from what runs now. Nothing of it outlives the sheet. Main thread.
class NewRuleSheet {
public:
    static constexpr std::string_view title = "New Rule";
    static constexpr std::string_view watchLabel = "Watch";
    static constexpr std::string_view typedPrompt = "Or type part of the command line, like puma or next dev";
    static constexpr std::string_view noSessions =
        "No agent session is running right now. The rule applies to sessions you start later.";
    static constexpr std::string_view cancel = "Cancel";
    static constexpr std::string_view addRule = "Add Rule";

    /// `model` outlives the sheet. `locale` is an ICU identifier.
    NewRuleSheet(AppModel& model, std::string locale, TargetKind kind = TargetKind::app);

    TargetKind kind = TargetKind::app;
    std::optional<std::string> selection;
    std::string typed;
    bool onlyWithoutPrompt = false;

    /// Suggestions of the present kind.
    std::vector<RuleSuggestion> suggestions() const;
    /// The rule that "Add Rule" adds, in Log Only; nullopt while nothing is chosen. Typed text wins over a selected
    /// entry.
    std::optional<Rule> rule() const;
    /// The text below the list.
    std::string line() const;
    /// Adds the rule to the model; does nothing without one.
    void add();

private:
    std::optional<Rule> chosenRule() const;

    AppModel& model_;
    std::string locale_;
};

}  // namespace tolvane
