#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/Date.h"
#include "base/Text.h"
#include "core/storage/ActivityEntry.h"
#include "core/words/Calendar.h"

namespace tolvane {

/// Sums over entries of the log. Sizes in bytes; sums stop at the highest number there is.
struct FreedTotals {
    /// Entries that count.
    std::int64_t actions = 0;
    std::uint64_t memory = 0;
    std::uint64_t compressed = 0;

    bool operator==(const FreedTotals&) const = default;
};

/// Counts what rules did and what they would have done. Pure.
namespace ActivityStats {

struct Day {
    /// Its first moment.
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

/// What was really given back: measured figures, and the sizes of terminated processes that nobody measured.
FreedTotals freed(const std::vector<ActivityEntry>& entries, Date since);

/// What log-only rules would have given back. They flag a subject again and again as long as it stands: it counts once
/// per rule, at its largest.
FreedTotals wouldFree(const std::vector<ActivityEntry>& entries, Date since);

/// What was given back on each of the last `days` days, oldest first; the last one holds `endingOn`. Fewer than one
/// counts as one.
std::vector<Day> daily(const std::vector<ActivityEntry>& entries, int days, Date endingOn, const Calendar& calendar);

/// By rule name, the most freed first. A rule without entries since then stays, with zeros.
std::vector<RuleTotals> byRule(const std::vector<ActivityEntry>& entries, Date since);

}  // namespace ActivityStats

}  // namespace tolvane
