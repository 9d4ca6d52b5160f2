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

/// Compares each reading with the one before: how much CPU a process uses, which application it belongs to, and since
/// when nothing used it. Used is what takes more than `busyCPUPercent`, or what was brought to the front.
/// Confined to one thread at a time; `applications` outlives it.
class UsageTracker {
public:
    static constexpr double busyCPUPercent = 1.0;

    explicit UsageTracker(Applications& applications) : applications_(applications) {}

    /// The application came to the front. The latest call holds, whatever the dates say.
    void noteActivation(std::string_view appPath, Date at);

    /// Somebody set the clock on by so much, or back: what was dated so far is dated anew, so that nothing seems unused
    /// for a time that never passed.
    void clockWasSet(Seconds by);

    /// One row for each sample, in the same order, without project and session. A process that the reading missed is
    /// forgotten: when it comes back it is new.
    std::vector<ProcRow> update(std::vector<ProcSample>&& samples, Date now);

private:
    using AppIndex = std::int32_t;
    static constexpr AppIndex noApp = -1;

    struct App {
        Text appPath;
        Date lastActivation = distantPast;
        /// Whether the host was asked for the identifier; it is asked once, also when it knows none.
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
        /// The executable that `app` was found for.
        Text path;
    };

    void compare(ProcRow& row, Date now);
    AppIndex appOf(const ProcSample& sample, const Seen* before);
    AppIndex appAt(std::string_view appPath);
    void fillApp(ProcRow& row, AppIndex index);

    Applications& applications_;
    /// When `seen_` was read.
    Date at_;
    PidTable<Seen> seen_;
    /// Becomes `seen_` at the end of an update; kept for its memory.
    PidTable<Seen> next_;
    /// Of every application met; nothing is removed.
    std::vector<App> apps_;
    std::map<std::string, AppIndex, std::less<>> appIndex_;
};

}  // namespace tolvane
