#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <utility>

#include "app/demo/Demo.h"
#include "app/rows/TableRow.h"

namespace tolvane::Demo {

namespace {

constexpr double mebibyte = 1'048'576, gibibyte = 1024 * mebibyte;
constexpr int minutesOfDay = 1440, loadMinutes = 60;
constexpr int cores = 12;
constexpr std::size_t mostHolders = 25;

Date before(Date now, double minutes) { return now - Seconds{minutes * 60}; }

/// A known point of the day, in GiB and cores; values between two points are interpolated smoothly.
struct Turn {
    double minutesAgo, used, compressed, swap, performance, efficiency;
};

/// An afternoon, an evening, a night, a morning, an overloaded noon, and now.
constexpr std::array<Turn, 16> turns = {{
    {1440, 17.8, 2.9, 0.40, 2.6, 1.2},
    {1180, 18.6, 3.2, 0.42, 3.1, 1.3},
    {1080, 15.1, 2.6, 0.42, 1.1, 0.9},
    {960, 11.8, 1.9, 0.36, 0.4, 0.5},
    {560, 11.2, 1.8, 0.30, 0.3, 0.4},
    {500, 14.6, 2.0, 0.30, 2.2, 1.1},
    {360, 17.1, 2.4, 0.31, 2.3, 1.2},
    {250, 17.4, 2.5, 0.32, 2.5, 1.2},
    {215, 20.6, 4.2, 0.80, 5.2, 1.9},
    {185, 21.3, 4.8, 1.62, 5.9, 2.1},
    {155, 20.2, 4.6, 1.70, 3.4, 2.2},
    {120, 18.2, 3.5, 1.60, 2.6, 1.2},
    {60, 19.2, 3.7, 1.55, 2.8, 1.3},
    {30, 20.3, 4.3, 1.72, 4.1, 1.5},
    {15, 20.9, 4.6, 1.817, 3.1, 1.4},
    {0, 21.4, 4.86, 2.12, 2.6, 1.3},
}};

double between(double from, double to, double share) { return from + (to - from) * share * share * (3 - 2 * share); }

Turn turnAt(double minutesAgo) {
    for (std::size_t index = 1; index < turns.size(); ++index) {
        const Turn& from = turns[index - 1];
        const Turn& to = turns[index];
        if (minutesAgo < to.minutesAgo) continue;
        const double share = (from.minutesAgo - minutesAgo) / (from.minutesAgo - to.minutesAgo);
        return {.minutesAgo = minutesAgo,
                .used = between(from.used, to.used, share),
                .compressed = between(from.compressed, to.compressed, share),
                .swap = between(from.swap, to.swap, share),
                .performance = between(from.performance, to.performance, share),
                .efficiency = between(from.efficiency, to.efficiency, share)};
    }
    return turns.back();
}

/// Memory pressure of the overloaded noon.
std::int64_t pressureAt(int minutesAgo) {
    if (minutesAgo <= 192 && minutesAgo > 176) return static_cast<std::int64_t>(Pressure::critical);
    if (minutesAgo <= 226 && minutesAgo > 158) return static_cast<std::int64_t>(Pressure::warning);
    return static_cast<std::int64_t>(Pressure::normal);
}

/// Nearly all swap was read back at noon.
double swapInsAt(double minutesAgo) {
    const auto now = static_cast<double>(memory().swapIns);
    return now - std::min(minutesAgo, 150.0) * 6.4 * mebibyte -
           std::clamp(minutesAgo - 150, 0.0, 90.0) * 60 * mebibyte - std::max(minutesAgo - 240, 0.0) * 0.2 * mebibyte;
}

/// A row of the table with its processes, largest first.
struct Group {
    /// Has no values yet; all moments share its texts.
    Holder holder;
    std::vector<const Proc*> members;
};

std::vector<Group> groups(const std::vector<Proc>& procs, Date now) {
    std::vector<ProcRow> rows;
    for (const auto& proc : procs) rows.push_back(row(proc, now));
    const RowNames names{.application =
                             [](std::string_view appPath) {
                                 const auto name = appPath.substr(appPath.rfind('/') + 1);
                                 return std::string(name.substr(0, name.rfind(".app")));
                             },
                         .home = {}};
    auto lines = TableRow::build(rows, Grouping::apps, memory().compressionRatio, names);
    TableRow::sort(lines, {{.field = RowField::memory, .ascending = false}});
    std::vector<Group> made;
    for (auto& line : lines) {
        std::vector<const Proc*> members;
        for (const auto& proc : procs) {
            if (std::ranges::find(line.pids, proc.pid) != line.pids.end()) members.push_back(&proc);
        }
        Holder holder{.key = Text(line.id),
                      .title = Text(line.title),
                      .appPath = line.appPath ? std::optional(Text(*line.appPath)) : std::nullopt,
                      .started = line.started,
                      .swapIns = 0};
        made.push_back({.holder = std::move(holder), .members = std::move(members)});
    }
    return made;
}

/// A user who is away uses less memory.
double presence(double minutesAgo) { return 0.55 + 0.45 * turnAt(minutesAgo).used / turns.back().used; }

Holder holderAt(const Group& group, int minutesAgo) {
    Holder holder = group.holder;
    double memory = 0, compressed = 0;
    for (const auto* proc : group.members) {
        const double share =
            proc->shape(minutesAgo) * presence(minutesAgo) * (1 + 0.015 * wobble(minutesAgo, proc->pid % 97));
        memory += proc->mb * share;
        compressed += proc->compressedMB * share * share;
        holder.cpu += std::max(0.0, proc->cpu * (1 + 0.6 * wobble(minutesAgo, proc->pid % 97)));
    }
    holder.memory = static_cast<std::uint64_t>(memory * mebibyte);
    holder.compressed = static_cast<std::uint64_t>(compressed * mebibyte);
    return holder;
}

Moment moment(const std::vector<Group>& groups, Date now, int minutesAgo) {
    const Turn turn = turnAt(minutesAgo);
    const double unrest = wobble(minutesAgo, 3);
    Moment made{.date = before(now, minutesAgo),
                .total = memory().total,
                .used = static_cast<std::uint64_t>(turn.used * (1 + 0.006 * unrest) * gibibyte),
                .compressed = static_cast<std::uint64_t>(turn.compressed * (1 + 0.012 * unrest) * gibibyte),
                .swapUsed = static_cast<std::uint64_t>(turn.swap * gibibyte),
                .pressure = pressureAt(minutesAgo),
                .cores = cores,
                .performance = std::max(0.1, turn.performance * (1 + 0.14 * wobble(minutesAgo, 1))),
                .efficiency = std::max(0.1, turn.efficiency * (1 + 0.1 * wobble(minutesAgo, 2))),
                .swapIns = static_cast<std::uint64_t>(swapInsAt(minutesAgo))};
    made.cpu = (*made.performance + *made.efficiency) / cores;
    for (std::size_t place = 0; place < std::min(mostHolders, groups.size()); ++place) {
        auto holder = holderAt(groups[place], minutesAgo);
        if (holder.memory > 0) made.holders.push_back(std::move(holder));
    }
    return made;
}

}  // namespace

double wobble(double minutesAgo, double phase) {
    return (std::sin(minutesAgo / 17 + 2 * phase) + 0.6 * std::sin(minutesAgo / 5.3 + phase) +
            0.3 * std::sin(minutesAgo / 1.7 + 3 * phase)) /
           1.9;
}

ProcessHistory history(const std::vector<Proc>& procs, Date now) {
    ProcessHistory history;
    for (int ago = static_cast<int>(ProcessHistory::mostPoints) - 1; ago >= 0; --ago) {
        std::vector<ProcessHistory::Reading> readings;
        for (const auto& proc : procs) {
            const double unrest = wobble(ago, proc.pid % 97);
            const double share = proc.shape(ago) * (1 + 0.015 * unrest);
            readings.push_back({.pid = proc.pid,
                                .footprint = static_cast<std::uint64_t>(proc.mb * share * mebibyte),
                                .compressed = static_cast<std::uint64_t>(proc.compressedMB * share * mebibyte),
                                .cpu = std::max(0.0, proc.cpu * (1 + 0.5 * unrest))});
        }
        history.record(readings, before(now, ago));
    }
    return history;
}

std::vector<LoadPoint> loadHistory(Date now) {
    std::vector<LoadPoint> points;
    for (int ago = loadMinutes - 1; ago >= 0; --ago) {
        const double t = ago;
        points.push_back(
            {.date = before(now, t),
             .performance = std::max(
                 0.3, 2.4 + 0.6 * (std::sin(t / 17 + 1) + 0.6 * std::sin(t / 5.3 + 2) + 0.3 * std::sin(t + 3)) / 1.9),
             .efficiency =
                 1.3 + 0.3 * (std::sin(t / 17 + 2) + 0.6 * std::sin(t / 5.3 + 4) + 0.3 * std::sin(t + 6)) / 1.9});
    }
    return points;
}

std::vector<Moment> moments(const std::vector<Proc>& procs, Date now) {
    const auto groupsNow = groups(procs, now);
    std::vector<Moment> made;
    for (int ago = minutesOfDay - 1; ago >= 0; --ago) made.push_back(moment(groupsNow, now, ago));
    return made;
}

}  // namespace tolvane::Demo
