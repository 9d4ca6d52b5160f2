#pragma once

#include <vector>

#include "core/rules/RuleEngine.h"

/// What the rule engine means, step by step and rule by rule, without optimisation. Tests compare the real engine with
/// it.
namespace tolvane::plain {

std::vector<Decision> candidates(const Rule& rule, const World& world);
std::vector<Decision> decisions(const std::vector<Rule>& rules, const World& world, Date now,
                                const RuleEngine::FiredDates& lastFired);

}  // namespace tolvane::plain
