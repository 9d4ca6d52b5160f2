#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Date.h"
#include "core/sampling/PidTable.h"
#include "core/sampling/ProcRow.h"
#include "core/sampling/ProcSample.h"
#include "platform/Applications.h"

namespace tolvane {

/// Compares each reading with the one before: how much CPU a process uses, which application it belongs to, and when it
/// was last used. A process counts as used when it takes more than `busyCPUPercent` or its application comes to the
/// front. Confined to one thread at a time; `applications` outlives it.
class UsageTracker {
public:
    static constexpr double busyCPUPercent = 1.0;

    explicit UsageTracker(Applications& applications) : applications_(applications) {}

    /// Notes that the application came to the front. The latest call counts, whatever the dates say.
    void noteActivation(std::string_view appPath, Date at);

    /// Call when the wall clock was set forward by this much, or back. Shifts all dates, so that nothing seems unused
    /// for a time that never passed.
    void clockWasSet(Seconds by);

    /// Returns one row per sample, in the same order, without project and session. A process missing from a reading is
    /// forgotten; if it comes back it is new.
    std::vector<ProcRow> update(std::vector<ProcSample>&& samples, Date now);

private:
    using AppIndex = std::int32_t;
    static constexpr AppIndex noApp = -1;

    struct App {
        Text appPath;
        Date lastActivation = distantPast;
        /// Whether the host was asked for the identifier. It is asked once, even if it knows none.
        bool asked = false;
        std::optional<Text> appID = std::nullopt;
    };

    /// The latest reading of one life of a process.
    struct Seen {
        Pid pid = 0;
        AppIndex app = noApp;
        Date startTime;
        std::uint64_t cpuTimeNanos = 0;
        std::uint64_t perfTimeNanos = 0;
        Date firstSeen;
        Date lastBusy;
        /// The executable for which `app` was found.
        Text path;
    };

    void compare(ProcRow& row, Date now);
    AppIndex appOf(const ProcSample& sample, const Seen* before);
    AppIndex appAt(std::string_view appPath);
    void fillApp(ProcRow& row, AppIndex index);

    Applications& applications_;
    /// Date of the reading in `seen_`.
    Date at_;
    PidTable<Seen> seen_;
    /// Becomes `seen_` at the end of an update; kept to reuse its memory.
    PidTable<Seen> next_;
    /// Every application seen so far; entries are never removed.
    std::vector<App> apps_;
    std::map<std::string, AppIndex, std::less<>> appIndex_;
};

}  // namespace tolvane
