#include "core/advisor/Advisor.h"

#include <algorithm>

namespace tolvane {

namespace {

constexpr Seconds spacing{300};
constexpr std::uint64_t leastFootprint = 64ULL << 20;
/// Twelve hours, at one point per `spacing`.
constexpr std::size_t mostPoints = 144;
/// Thirteen dates bound twelve intervals, which make one hour.
constexpr std::size_t mostDates = 13;

constexpr Seconds warmUp{1800};
constexpr Seconds leastSpan{7200};
constexpr std::size_t pointsAtEachEnd = 3;
constexpr double leastGrowth = 200.0 * (1 << 20);
constexpr double leastRelativeGrowth = 0.25;
constexpr double leastRisingShare = 0.7;
constexpr double leastBytesPerHour = 50.0 * (1 << 20);
constexpr double secondsPerHour = 3600;

constexpr double leastBusyCores = 0.5;
constexpr int leastBusyIntervals = 3;
constexpr double nanosPerSecond = 1e9;

/// The process's own earlier track; nullptr when the pid belonged to another process.
template <typename Track>
Track* oldTrack(std::map<Pid, Track>& tracks, const ProcSample& sample) {
    const auto found = tracks.find(sample.pid);
    return found != tracks.end() && found->second.start == sample.startTime ? &found->second : nullptr;
}

/// Reorders `values`, which must not be empty.
double median(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    if (values.size() % 2 == 1) return *middle;
    return (*middle + *std::max_element(values.begin(), middle)) / 2;
}

double medianFootprint(std::span<const Advisor::Point> points) {
    std::vector<double> footprints;
    for (const auto& point : points) footprints.push_back(static_cast<double>(point.footprint));
    return median(footprints);
}

struct Slopes {
    /// Bytes per hour, one slope for each pair of points.
    std::vector<double> all;
    std::size_t rising = 0;
};

Slopes pairwiseSlopes(std::span<const Advisor::Point> points) {
    Slopes slopes;
    slopes.all.reserve(points.size() * (points.size() - 1) / 2);
    for (std::size_t early = 0; early < points.size(); ++early) {
        for (std::size_t late = early + 1; late < points.size(); ++late) {
            const double rise =
                static_cast<double>(points[late].footprint) - static_cast<double>(points[early].footprint);
            const Seconds between = points[late].date - points[early].date;
            slopes.all.push_back(rise / (between.count() / secondsPerHour));
            if (rise > 0) ++slopes.rising;
        }
    }
    return slopes;
}

/// Nanoseconds that the processes used between the two dates.
double timeBetween(std::span<const Advisor::CPUTrack* const> tracks, Date from, Date to) {
    double sum = 0;
    for (const auto* track : tracks) {
        const auto before = track->points.find(from);
        const auto after = track->points.find(to);
        if (before == track->points.end() || after == track->points.end()) continue;
        if (after->second >= before->second) sum += static_cast<double>(after->second - before->second);
    }
    return sum;
}

}  // namespace

void Advisor::record(const std::vector<ProcRow>& rows, Date now) {
    recordMemory(rows, now);
    if (cpuDates.empty() || now - cpuDates.back() >= spacing) recordProcessor(rows, now);
}

void Advisor::recordMemory(const std::vector<ProcRow>& rows, Date now) {
    std::map<Pid, Track> next;
    for (const auto& row : rows) {
        const auto& sample = row.sample;
        auto* old = oldTrack(tracks, sample);
        if (!old && sample.footprint < leastFootprint) continue;
        Track track = old ? std::move(*old) : Track{.start = sample.startTime, .points = {}};
        if (track.points.empty() || now - track.points.back().date >= spacing) {
            track.points.push_back({.date = now, .footprint = sample.footprint});
            if (track.points.size() > mostPoints) track.points.erase(track.points.begin());
        }
        next.insert_or_assign(next.end(), sample.pid, std::move(track));
    }
    tracks = std::move(next);
}

void Advisor::recordProcessor(const std::vector<ProcRow>& rows, Date now) {
    cpuDates.push_back(now);
    if (cpuDates.size() > mostDates) cpuDates.erase(cpuDates.begin());
    std::map<Pid, CPUTrack> next;
    for (const auto& row : rows) {
        const auto& sample = row.sample;
        auto* old = oldTrack(cpuTracks, sample);
        CPUTrack track = old ? std::move(*old) : CPUTrack{.start = sample.startTime, .points = {}};
        track.points.insert_or_assign(now, sample.perfTimeNanos);
        std::erase_if(track.points,
                      [&](const auto& point) { return std::ranges::find(cpuDates, point.first) == cpuDates.end(); });
        next.insert_or_assign(next.end(), sample.pid, std::move(track));
    }
    cpuTracks = std::move(next);
}

std::optional<Advisor::Growth> Advisor::growth(std::span<const Point> points, Date start) {
    const auto warm = std::ranges::find_if(points, [&](const Point& point) { return point.date - start >= warmUp; });
    const auto usable = points.subspan(static_cast<std::size_t>(warm - points.begin()));
    if (usable.empty()) return std::nullopt;
    const Seconds span = usable.back().date - usable.front().date;
    if (span < leastSpan) return std::nullopt;

    const std::size_t ends = std::min(pointsAtEachEnd, usable.size());
    const double head = medianFootprint(usable.first(ends));
    const double delta = medianFootprint(usable.last(ends)) - head;
    if (delta < leastGrowth || delta < head * leastRelativeGrowth) return std::nullopt;

    auto slopes = pairwiseSlopes(usable);
    if (static_cast<double>(slopes.rising) < leastRisingShare * static_cast<double>(slopes.all.size())) {
        return std::nullopt;
    }
    const double perHour = median(slopes.all);
    if (perHour < leastBytesPerHour) return std::nullopt;
    return Growth{.perHour = perHour, .total = static_cast<std::uint64_t>(delta), .span = span};
}

std::optional<Advisor::Busy> Advisor::busy(std::span<const CPUTrack* const> tracks, std::span<const Date> dates) {
    double nanos = 0;
    Seconds span{0};
    int intervals = 0;
    for (std::size_t index = dates.size(); index >= 2; --index) {
        const Date from = dates[index - 2];
        const Date to = dates[index - 1];
        const double used = timeBetween(tracks, from, to);
        if (used / ((to - from).count() * nanosPerSecond) < leastBusyCores) break;
        nanos += used;
        span += to - from;
        ++intervals;
    }
    if (intervals < leastBusyIntervals) return std::nullopt;
    return Busy{.percent = nanos / (span.count() * nanosPerSecond) * 100, .span = span};
}

}  // namespace tolvane
