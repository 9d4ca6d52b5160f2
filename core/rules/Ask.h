#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Date.h"
#include "base/Pid.h"
#include "core/rules/Rule.h"
#include "core/rules/World.h"

namespace tolvane {

/// What a rule found: a decision before it is one. Most are dropped, since they cool down, and a rule is large to copy.
struct Subject {
    std::string key;
    std::string title;
    std::vector<Pid> pids;
    std::uint64_t memory = 0;
    Date unusedSince;
    std::uint64_t compressed = 0;
};

/// One rule that looks for its subjects in a world, and what it found. Refers to its rule.
struct Ask {
    const Rule* rule = nullptr;
    Date now;
    /// A subject must have been unused for so long.
    std::optional<Seconds> unused;
    /// A subject must hold so many bytes.
    std::uint64_t memory = 0;
    /// Processes of applications are left alone.
    bool sparesApplications = false;
    /// Those that fit, in order.
    std::vector<Subject> found;

    /// Asks for every subject.
    static Ask all(const Rule& rule);
    /// Asks for those that meet the rule's conditions; none where a condition cannot be met.
    static std::optional<Ask> due(const Rule& rule, Date now);

    bool fits(Date unusedSince, std::uint64_t bytes) const {
        return bytes >= memory && (!unused || now - unusedSince >= *unused);
    }
};

}  // namespace tolvane
