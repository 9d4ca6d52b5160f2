#pragma once

#include <string>
#include <vector>

#include "core/rules/ClaudeRoster.h"
#include "core/sampling/ProcRow.h"

/// Labels the processes of listed agent sessions.
namespace tolvane::SessionLabels {

std::string label(const ClaudeWorker& worker);

/// Sets `claudeSession` of every row to the label of the worker that hosts the process or one of its ancestors, or
/// clears it. When two workers claim a process, the later one wins.
void apply(const std::vector<ClaudeWorker>& workers, std::vector<ProcRow>& rows);

}  // namespace tolvane::SessionLabels
