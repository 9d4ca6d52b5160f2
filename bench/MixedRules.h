#pragma once

#include <cstdint>
#include <vector>

#include "core/rules/Rule.h"

namespace tolvane::bench {

/// Rules of all kinds that only log: a quarter for applications, a quarter for agents, the others for commands with
/// three patterns each.
std::vector<Rule> mixedRules(int count, std::int64_t unusedMinutes, std::int64_t memoryMB);

}  // namespace tolvane::bench
