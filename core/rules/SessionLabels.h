#pragma once

#include <string>
#include <vector>

#include "core/rules/ClaudeRoster.h"
#include "core/sampling/ProcRow.h"

/// Which processes belong to a listed agent session, in words.
namespace tolvane::SessionLabels {

std::string label(const ClaudeWorker& worker);

/// Sets `claudeSession` of every row: the label of the worker that hosts the process or that it descends from, the
/// later worker's where two claim it, else none.
void apply(const std::vector<ClaudeWorker>& workers, std::vector<ProcRow>& rows);

}  // namespace tolvane::SessionLabels
