#include "app/sampling/ProcessHistory.h"

#include <algorithm>
#include <map>

namespace tolvane {

namespace {

/// A process is followed when it exceeds this memory or reaches this percentage of a core.
constexpr std::uint64_t sizeableBytes = 20'971'520;
constexpr double busyPercent = 5.0;
constexpr std::size_t firstCapacity = 8;

bool isSizeable(const ProcRow& row) {
    return row.sample.footprint + row.sample.compressed > sizeableBytes || row.cpuPercent >= busyPercent;
}

HistoryPoint sum(const HistoryPoint& a, const HistoryPoint& b) {
    return {.date = a.date,
            .footprint = a.footprint + b.footprint,
            .compressed = a.compressed + b.compressed,
            .cpu = a.cpu + b.cpu};
}

}  // namespace

void ProcessHistory::Track::add(const Figures& next) {
    if (figures.size() == mostPoints) {
        figures[oldest] = next;
        oldest = (oldest + 1) % mostPoints;
        return;
    }
    // Grows by hand: the vector's own growth would end at a capacity of 512 for 360 readings.
    if (figures.size() == figures.capacity()) {
        figures.reserve(std::min(mostPoints, std::max(firstCapacity, 2 * figures.size())));
    }
    figures.push_back(next);
}

const ProcessHistory::Figures& ProcessHistory::Track::at(std::size_t age) const {
    return figures[(oldest + figures.size() - 1 - age) % figures.size()];
}

ProcessHistory::Figures& ProcessHistory::Track::latest() {
    return figures[(oldest + figures.size() - 1) % figures.size()];
}

void ProcessHistory::record(const std::vector<ProcRow>& rows, Date date) {
    for (const auto& row : rows) {
        auto found = tracks_.find(row.id());
        if (found == tracks_.end()) {
            if (!isSizeable(row)) continue;
            found = tracks_.try_emplace(row.id()).first;
        }
        auto& track = found->second;
        if (beganBefore(track, row.sample.startTime)) track = {};
        add(track, {.footprint = row.sample.footprint, .compressed = row.sample.compressed, .cpu = row.cpuPercent});
    }
    endTick(date);
}

void ProcessHistory::record(std::span<const Reading> readings, Date date) {
    for (const auto& reading : readings) {
        add(tracks_[reading.pid],
            {.footprint = reading.footprint, .compressed = reading.compressed, .cpu = reading.cpu});
    }
    endTick(date);
}

bool ProcessHistory::beganBefore(const Track& track, Date start) const {
    if (track.figures.empty() || track.ticks == ticks_ + 1) return false;
    return date(track.figures.size() - 1) < start;
}

void ProcessHistory::add(Track& track, const Figures& figures) {
    if (track.ticks == ticks_ + 1) {
        track.latest() = figures;
    } else {
        track.add(figures);
        track.ticks = ticks_ + 1;
    }
}

void ProcessHistory::endTick(Date date) {
    dates_[ticks_ % mostPoints] = date;
    ++ticks_;
    std::erase_if(tracks_, [this](const auto& each) { return each.second.ticks != ticks_; });
}

Date ProcessHistory::date(std::size_t age) const { return dates_[(ticks_ - 1 - age) % mostPoints]; }

HistoryPoint ProcessHistory::point(const Track& track, std::size_t age) const {
    const auto& figures = track.at(age);
    return {.date = date(age), .footprint = figures.footprint, .compressed = figures.compressed, .cpu = figures.cpu};
}

std::vector<HistoryPoint> ProcessHistory::points(const std::vector<Pid>& pids) const {
    if (pids.empty()) return {};
    return pids.size() == 1 ? pointsOf(pids.front()) : pointsTogether(pids);
}

std::vector<HistoryPoint> ProcessHistory::pointsOf(Pid pid) const {
    const auto found = tracks_.find(pid);
    if (found == tracks_.end()) return {};
    const auto& track = found->second;
    std::vector<HistoryPoint> points;
    points.reserve(track.figures.size());
    for (std::size_t age = track.figures.size(); age-- > 0;) points.push_back(point(track, age));
    return points;
}

std::vector<HistoryPoint> ProcessHistory::pointsTogether(const std::vector<Pid>& pids) const {
    std::map<Date, HistoryPoint> sums;
    for (const auto& each : sumsByAge(pids)) {
        if (!each) continue;
        const auto [place, isNew] = sums.try_emplace(each->date, *each);
        // Two ticks can share one reading of the clock.
        if (!isNew) place->second = sum(place->second, *each);
    }
    std::vector<HistoryPoint> points;
    points.reserve(sums.size());
    for (const auto& [date, point] : sums) points.push_back(point);
    return points;
}

std::array<std::optional<HistoryPoint>, ProcessHistory::mostPoints> ProcessHistory::sumsByAge(
    const std::vector<Pid>& pids) const {
    std::array<std::optional<HistoryPoint>, mostPoints> sums;
    for (const Pid pid : pids) {
        const auto found = tracks_.find(pid);
        if (found == tracks_.end()) continue;
        for (std::size_t age = 0; age < found->second.figures.size(); ++age) {
            const auto next = point(found->second, age);
            sums[age] = sums[age] ? sum(*sums[age], next) : next;
        }
    }
    return sums;
}

bool ProcessHistory::operator==(const ProcessHistory& other) const {
    return tracks_.size() == other.tracks_.size() && std::ranges::all_of(tracks_, [&](const auto& each) {
               return other.tracks_.contains(each.first) && pointsOf(each.first) == other.pointsOf(each.first);
           });
}

}  // namespace tolvane
