#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

#include "app/sampling/HistoryPoint.h"
#include "core/sampling/ProcRow.h"

namespace tolvane {

/// The latest readings of every sizeable process, one per tick and at most 360 of each. In memory only.
///
/// All readings of a tick share its date, and a process that misses a tick is forgotten with all its readings. So the
/// dates are kept once for all processes, and a reading takes 24 bytes. A steady tick allocates and copies nothing.
class ProcessHistory {
public:
    static constexpr std::size_t mostPoints = 360;

    /// One process at one tick.
    struct Reading {
        Pid pid = 0;
        /// Bytes.
        std::uint64_t footprint = 0;
        std::uint64_t compressed = 0;
        /// Percent of one core.
        double cpu = 0;
    };

    /// Records the tick's rows of large or busy processes, and of every process already followed. Forgets a process
    /// that is not among them; a reused pid is another process and starts afresh.
    void record(const std::vector<ProcRow>& rows, Date date);
    /// Records these readings as the tick's, whatever their size.
    void record(std::span<const Reading> readings, Date date);

    /// Oldest first. With several processes, sums the points of equal date and orders by date.
    std::vector<HistoryPoint> points(const std::vector<Pid>& pids) const;
    /// The number of followed processes.
    std::size_t size() const { return tracks_.size(); }

    bool operator==(const ProcessHistory& other) const;

private:
    struct Figures {
        std::uint64_t footprint = 0;
        std::uint64_t compressed = 0;
        double cpu = 0;

        bool operator==(const Figures&) const = default;
    };
    /// The values of the latest `figures.size()` ticks; a ring once it is full.
    struct Track {
        std::vector<Figures> figures;
        std::size_t oldest = 0;
        /// The value of `ticks_` at the end of the track's latest tick.
        std::uint64_t ticks = 0;

        void add(const Figures& next);
        /// `age` 0 is the latest.
        const Figures& at(std::size_t age) const;
        Figures& latest();
    };

    /// True when the points belong to an earlier process with this pid. Call it before adding the current tick.
    bool beganBefore(const Track& track, Date start) const;
    void add(Track& track, const Figures& figures);
    void endTick(Date date);
    /// The date of the tick that is `age` ticks old.
    Date date(std::size_t age) const;
    HistoryPoint point(const Track& track, std::size_t age) const;
    std::vector<HistoryPoint> pointsOf(Pid pid) const;
    std::vector<HistoryPoint> pointsTogether(const std::vector<Pid>& pids) const;
    std::array<std::optional<HistoryPoint>, mostPoints> sumsByAge(const std::vector<Pid>& pids) const;

    std::unordered_map<Pid, Track> tracks_;
    /// Ticks so far; tick n has its date at n modulo the size.
    std::uint64_t ticks_ = 0;
    std::array<Date, mostPoints> dates_{};
};

}  // namespace tolvane
