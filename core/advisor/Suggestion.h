#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Pid.h"
#include "core/rules/Rule.h"

namespace tolvane {

/// Something that nobody named and that could be shut down.
struct Suggestion {
    enum class Kind { simulator, leftRunning, growing, duplicate, busy, idle };

    /// Stable name of the finding.
    std::string id;
    Kind kind = Kind::idle;
    std::string title;
    std::optional<std::string> appPath;
    /// What the action hits, ascending.
    std::vector<Pid> pids;
    /// Bytes to be won.
    std::uint64_t memory = 0;
    /// The sentence that says why.
    std::string evidence;
    RuleAction action = RuleAction::terminate;
    std::optional<Rule> rule;
    /// Percent of one core; busy findings only.
    std::optional<double> cpu;

    bool operator==(const Suggestion&) const = default;
};

}  // namespace tolvane
