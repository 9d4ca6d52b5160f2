#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/Date.h"
#include "base/Text.h"
#include "core/storage/ActivityEntry.h"
#include "core/words/Calendar.h"

namespace tolvane {

/// Sums over entries of the log. Sizes in bytes; sums saturate.
struct FreedTotals {
    /// Number of entries that count.
    std::int64_t actions = 0;
    std::uint64_t memory = 0;
    std::uint64_t compressed = 0;

    bool operator==(const FreedTotals&) const = default;
};

/// Sums up what rules did and what they would have done. Pure.
namespace ActivityStats {

struct Day {
    /// Start of the day.
    Date day;
    /// Bytes.
    std::uint64_t memory = 0;

    bool operator==(const Day&) const = default;
};

struct RuleTotals {
    Text rule;
    FreedTotals freed;
    FreedTotals would;

    bool operator==(const RuleTotals&) const = default;
};

/// What was really freed: measured numbers, and the sizes of terminated processes that were not measured.
FreedTotals freed(const std::vector<ActivityEntry>& entries, Date since);

/// What log-only rules would have freed. They flag a subject again and again while it lasts; it counts once per rule,
/// at its largest size.
FreedTotals wouldFree(const std::vector<ActivityEntry>& entries, Date since);

/// What was freed on each of the last `days` days, oldest first; the last one contains `endingOn`. Fewer than one day
/// counts as one.
std::vector<Day> daily(const std::vector<ActivityEntry>& entries, int days, Date endingOn, const Calendar& calendar);

/// Totals by rule name, the most freed first. A rule without entries since then stays, with zeros.
std::vector<RuleTotals> byRule(const std::vector<ActivityEntry>& entries, Date since);

}  // namespace ActivityStats

}  // namespace tolvane
