#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/Date.h"
#include "base/Pid.h"
#include "core/rules/Rule.h"

namespace tolvane {

/// One subject that a rule applies to.
struct Decision {
    Rule rule;
    /// Stable name of the subject: across restarts for applications and listed agent sessions, else of one process.
    std::string subjectKey;
    /// The name shown.
    std::string title;
    /// The processes to act on.
    std::vector<Pid> pids;
    /// Bytes that they hold together.
    std::uint64_t memory = 0;
    /// The latest of theirs: what was used in part was used.
    Date unusedSince;
    /// Bytes of `memory` that are compressed or in swap.
    std::uint64_t compressed = 0;

    RuleAction action() const { return rule.action; }
    bool dryRun() const { return rule.dryRun; }
    /// The sentence that the log and notifications give: "puma had been unused for 2 hr and was using 512 MB. Rule: x."
    std::string reason(Date now, std::string_view locale) const;
    bool operator==(const Decision&) const = default;
};

}  // namespace tolvane
