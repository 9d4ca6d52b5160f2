#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/Date.h"
#include "core/rules/Decision.h"
#include "core/rules/Rule.h"
#include "core/rules/World.h"

/// Decides which rules are due at one moment of the machine. Pure: it touches no process and reads no clock.
namespace tolvane::RuleEngine {

/// How long a rule leaves a subject alone after firing on it.
inline constexpr Seconds cooldown{600};
/// The same for a rule that only logs.
inline constexpr Seconds dryRunCooldown{3600};

/// By `cooldownKey`.
using FiredDates = std::map<std::string, Date, std::less<>>;

/// What is due now, in rule order and within a rule in candidate order. Two rules may decide on the same subject.
std::vector<Decision> decisions(const std::vector<Rule>& rules, const World& world, Date now,
                                const FiredDates& lastFired);

/// Every subject of the rule, regardless of its conditions, cooldown and mode.
std::vector<Decision> candidates(const Rule& rule, const World& world);

/// "{id of the rule}|{subject}"
std::string cooldownKey(const Rule& rule, std::string_view subject);

/// Whether the rule does nothing while the host cannot say which application is in front.
bool needsFrontmost(const Rule& rule);

}  // namespace tolvane::RuleEngine
