#include "core/sampling/UsageTracker.h"

#include <algorithm>
#include <utility>

namespace tolvane {

namespace {

double percentBetween(std::uint64_t from, std::uint64_t to, Seconds span) {
    if (span.count() <= 0 || to < from) return 0;
    return static_cast<double>(to - from) / (span.count() * 1e9) * 100;
}

}  // namespace

void UsageTracker::noteActivation(std::string_view appPath, Date at) {
    apps_[static_cast<std::size_t>(appAt(appPath))].lastActivation = at;
}

void UsageTracker::clockWasSet(Seconds by) {
    at_ += by;
    seen_.forEach([by](Seen& seen) {
        seen.firstSeen += by;
        seen.lastBusy += by;
    });
    for (auto& app : apps_) {
        if (app.lastActivation != distantPast) app.lastActivation += by;
    }
}

std::vector<ProcRow> UsageTracker::update(std::vector<ProcSample>&& samples, Date now) {
    std::vector<ProcRow> rows;
    rows.reserve(samples.size());
    next_.reserve(samples.size());
    for (auto& sample : samples) compare(rows.emplace_back(std::move(sample), 0.0, 0.0, now), now);
    next_.settle();
    std::swap(seen_, next_);
    next_.clear();
    at_ = now;
    return rows;
}

void UsageTracker::compare(ProcRow& row, Date now) {
    const auto& sample = row.sample;
    auto* before = seen_.find(sample.pid);
    if (before && before->startTime != sample.startTime) before = nullptr;
    Seen seen{.pid = sample.pid,
              .app = appOf(sample, before),
              .startTime = sample.startTime,
              .cpuTimeNanos = sample.cpuTimeNanos,
              .perfTimeNanos = sample.perfTimeNanos,
              .firstSeen = before ? before->firstSeen : now,
              .lastBusy = now,
              .path = sample.path};
    if (before) {
        row.cpuPercent = percentBetween(before->cpuTimeNanos, sample.cpuTimeNanos, now - at_);
        row.perfPercent = percentBetween(before->perfTimeNanos, sample.perfTimeNanos, now - at_);
        if (row.cpuPercent <= busyCPUPercent) seen.lastBusy = before->lastBusy;
    }
    row.unusedSince = seen.lastBusy;
    if (seen.app != noApp) fillApp(row, seen.app);
    next_.add(std::move(seen));
}

/// A desktop moves a process into its application's scope just after its start, so the first answer may come too early.
/// Ask the host again at the second reading of a life, and whenever the process runs another executable.
UsageTracker::AppIndex UsageTracker::appOf(const ProcSample& sample, const Seen* before) {
    if (before && before->firstSeen != at_ && before->path == sample.path) return before->app;
    const auto appPath = applications_.appPath(sample.pid, sample.path);
    return appPath ? appAt(*appPath) : noApp;
}

UsageTracker::AppIndex UsageTracker::appAt(std::string_view appPath) {
    const auto known = appIndex_.find(appPath);
    if (known != appIndex_.end()) return known->second;
    const auto index = static_cast<AppIndex>(apps_.size());
    apps_.push_back({.appPath = appPath});
    appIndex_.emplace(appPath, index);
    return index;
}

void UsageTracker::fillApp(ProcRow& row, AppIndex index) {
    auto& app = apps_[static_cast<std::size_t>(index)];
    if (!std::exchange(app.asked, true)) app.appID = applications_.appID(app.appPath);
    row.unusedSince = std::max(row.unusedSince, app.lastActivation);
    row.appPath = app.appPath;
    row.appID = app.appID;
}

}  // namespace tolvane
