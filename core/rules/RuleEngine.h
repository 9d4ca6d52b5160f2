#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/Date.h"
#include "core/rules/Decision.h"
#include "core/rules/Rule.h"
#include "core/rules/World.h"

/// Turns rules and a moment of the machine into what is due. Pure: it touches no process and reads no clock.
namespace tolvane::RuleEngine {

/// For so long a rule leaves a subject alone after it fired on it.
inline constexpr Seconds cooldown{600};
/// The same for a rule that only logs.
inline constexpr Seconds dryRunCooldown{3600};

/// By `cooldownKey`.
using FiredDates = std::map<std::string, Date, std::less<>>;

/// What is due now: in rule order, within a rule in candidate order. Two rules may decide on one subject.
std::vector<Decision> decisions(const std::vector<Rule>& rules, const World& world, Date now,
                                const FiredDates& lastFired);

/// Every subject of the rule, whatever its conditions, cool-downs and mode say.
std::vector<Decision> candidates(const Rule& rule, const World& world);

/// "{id of the rule}|{subject}"
std::string cooldownKey(const Rule& rule, std::string_view subject);

/// Whether the rule stands still as a whole while nobody can tell which application is in front.
bool needsFrontmost(const Rule& rule);

}  // namespace tolvane::RuleEngine
