#pragma once

#include <vector>

#include "core/rules/Ask.h"
#include "core/rules/World.h"

namespace tolvane {

/// Finds sessions of agents: an agent with all that it started, down to other sessions. Each ask has an
/// `AgentSessionTarget` or an `EmptyClaudeSessionTarget`. One pass over the rows finds the agents of all asks.
void findAgentSessions(const std::vector<Ask*>& asks, const World& world);

}  // namespace tolvane
