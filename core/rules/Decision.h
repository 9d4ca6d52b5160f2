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
    /// Stable name of the subject. Applications and listed agent sessions keep it across restarts; other subjects are
    /// named after one process.
    std::string subjectKey;
    /// Name to show.
    std::string title;
    /// The processes to act on.
    std::vector<Pid> pids;
    /// Bytes that they hold together.
    std::uint64_t memory = 0;
    /// When any of them was last used.
    Date unusedSince;
    /// Bytes of `memory` that are compressed or in swap.
    std::uint64_t compressed = 0;

    RuleAction action() const { return rule.action; }
    bool dryRun() const { return rule.dryRun; }
    /// The sentence for the log and notifications: "puma had been unused for 2 hr and was using 512 MB. Rule: x."
    std::string reason(Date now, std::string_view locale) const;
    bool operator==(const Decision&) const = default;
};

}  // namespace tolvane
