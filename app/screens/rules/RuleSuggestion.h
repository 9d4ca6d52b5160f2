#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/AppModel.h"
#include "core/rules/Rule.h"

namespace tolvane {

/// One entry that the new-rule sheet offers.
struct RuleSuggestion {
    /// Selection key.
    std::string id;
    std::string title;
    std::string detail;
    /// For the icon.
    std::optional<std::string> appPath;
    /// Bytes; lists go by it, the largest first, ties by id.
    std::uint64_t memory = 0;
    /// What this entry would add.
    Rule rule;

    bool operator==(const RuleSuggestion&) const = default;
};

/// What runs now and could be watched. `locale` is an ICU identifier.
namespace RuleSuggestions {

std::vector<RuleSuggestion> appSuggestions(const AppModel& model, std::string_view locale);
std::vector<RuleSuggestion> commandSuggestions(const AppModel& model, std::string_view locale);
/// Their rule is the one of all sessions.
std::vector<RuleSuggestion> agentSuggestions(const AppModel& model, bool onlyWithoutPrompt, std::string_view locale);

/// Off until the sheet adds them; each has a new id.
Rule appRule(const std::string& appID, const std::string& name, std::uint64_t memory);
Rule commandRule(const std::string& name, std::vector<std::string> patterns);
Rule agentRule(bool onlyWithoutPrompt);
/// The limit, in binary megabytes, that an application of this size does not pass today: the first choice above one
/// and a half times of it, or the largest.
std::int64_t limitAbove(std::uint64_t memory);

}  // namespace RuleSuggestions

}  // namespace tolvane
