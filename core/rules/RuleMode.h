#pragma once

namespace tolvane {

/// How far a rule may go: a view of its `enabled` and `dryRun`, never stored.
enum class RuleMode { off, logOnly, on };

}  // namespace tolvane
