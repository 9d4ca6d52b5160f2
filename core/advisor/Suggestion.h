#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Pid.h"
#include "core/rules/Rule.h"

namespace tolvane {

/// Something that the advisor found on its own and that could be shut down.
struct Suggestion {
    enum class Kind { simulator, leftRunning, growing, duplicate, busy, idle };

    /// Stable identifier of the finding.
    std::string id;
    Kind kind = Kind::idle;
    std::string title;
    std::optional<std::string> appPath;
    /// The processes that the action applies to, ascending.
    std::vector<Pid> pids;
    /// Bytes that the action could free.
    std::uint64_t memory = 0;
    /// The sentence that explains the finding.
    std::string evidence;
    RuleAction action = RuleAction::terminate;
    std::optional<Rule> rule;
    /// Percent of one core; busy findings only.
    std::optional<double> cpu;

    bool operator==(const Suggestion&) const = default;
};

}  // namespace tolvane
