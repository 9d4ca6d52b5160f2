#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/AppModel.h"
#include "core/rules/Rule.h"

namespace tolvane {

/// One entry of the new-rule sheet.
struct RuleSuggestion {
    /// Selection key.
    std::string id;
    std::string title;
    std::string detail;
    /// For the icon.
    std::optional<std::string> appPath;
    /// Bytes. Lists are sorted by it, largest first, ties by id.
    std::uint64_t memory = 0;
    /// The rule that this entry would add.
    Rule rule;

    bool operator==(const RuleSuggestion&) const = default;
};

/// Everything that runs now and could be watched. `locale` is an ICU identifier.
namespace RuleSuggestions {

std::vector<RuleSuggestion> appSuggestions(const AppModel& model, std::string_view locale);
std::vector<RuleSuggestion> commandSuggestions(const AppModel& model, std::string_view locale);
/// Each entry has the rule for all sessions.
std::vector<RuleSuggestion> agentSuggestions(const AppModel& model, bool onlyWithoutPrompt, std::string_view locale);

/// The rules are off until the sheet adds them; each has a new id.
Rule appRule(const std::string& appID, const std::string& name, std::uint64_t memory);
Rule commandRule(const std::string& name, std::vector<std::string> patterns);
Rule agentRule(bool onlyWithoutPrompt);
/// A limit, in binary megabytes, that an application of this size does not exceed yet: the first choice above one and a
/// half times the size, or the largest.
std::int64_t limitAbove(std::uint64_t memory);

}  // namespace RuleSuggestions

}  // namespace tolvane
