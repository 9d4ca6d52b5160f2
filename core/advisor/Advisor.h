#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

#include "core/advisor/Suggestion.h"
#include "core/sampling/ProcRow.h"

namespace tolvane {

struct AdviceScene;

/// A thin history of memory and processor time per process, so that advice can name trends. Kept in memory only. A
/// reused pid is another process and starts afresh. Main thread.
struct Advisor {
    struct Point {
        Date date;
        /// Bytes.
        std::uint64_t footprint = 0;
        bool operator==(const Point&) const = default;
    };
    /// Memory of one process that is or once was sizeable; oldest point first.
    struct Track {
        Date start;
        std::vector<Point> points;
        bool operator==(const Track&) const = default;
    };
    /// Performance-core time of one process: cumulative nanoseconds by date of the reading.
    struct CPUTrack {
        Date start;
        std::map<Date, std::uint64_t> points;
        bool operator==(const CPUTrack&) const = default;
    };
    /// A steady rise of memory.
    struct Growth {
        /// Bytes per hour: the median of all pairwise slopes.
        double perHour = 0;
        /// Bytes.
        std::uint64_t total = 0;
        Seconds span{0};
        bool operator==(const Growth&) const = default;
    };
    /// Unbroken work up to now.
    struct Busy {
        /// Percent of one core.
        double percent = 0;
        Seconds span{0};
        bool operator==(const Busy&) const = default;
    };

    /// Whether the machine has efficiency cores, which changes the text of busy findings.
    bool hybrid = true;
    std::map<Pid, Track> tracks;
    std::map<Pid, CPUTrack> cpuTracks;
    /// When `cpuTracks` were taken, oldest first.
    std::vector<Date> cpuDates;

    /// Records the tick's rows and forgets processes that are not among them.
    void record(const std::vector<ProcRow>& rows, Date now);

    /// The growth if memory rises steadily, judged by the median of all pairwise slopes (Theil-Sen), which neither a
    /// few outliers nor a sawtooth can fool. The process's first half hour after `start` does not count.
    static std::optional<Growth> growth(std::span<const Point> points, Date start);
    /// The load if the processes together used half a core or more in each of the latest intervals of `dates`, at least
    /// three of them without a break.
    static std::optional<Busy> busy(std::span<const CPUTrack* const> tracks, std::span<const Date> dates);

    /// What could be shut down, most memory first. Detectors run in the order of the kinds, and later ones skip
    /// processes that an earlier one has claimed. Never fails: facts that cannot be read yield no finding.
    std::vector<Suggestion> suggestions(const AdviceScene& scene) const;

    bool operator==(const Advisor&) const = default;

private:
    void recordMemory(const std::vector<ProcRow>& rows, Date now);
    void recordProcessor(const std::vector<ProcRow>& rows, Date now);
};

}  // namespace tolvane
