#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "base/Date.h"
#include "core/rules/Decision.h"
#include "core/rules/Rule.h"
#include "core/rules/World.h"

namespace tolvane {

/// The matches of one rule right now, whatever its mode and cool-downs.
struct RuleStatus {
    std::vector<Decision> matches;
    /// Subject keys of the matches that meet the conditions.
    std::set<std::string> due;

    static RuleStatus of(const Rule& rule, const World& world, Date now);

    /// "3 matches running, 2 past the limit"; nullopt without matches.
    std::optional<std::string> line() const;
    bool isDue(const Decision& match) const { return due.contains(match.subjectKey); }

    bool operator==(const RuleStatus&) const = default;
};

}  // namespace tolvane
