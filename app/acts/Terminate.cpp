#include <QCoroTask>
#include <algorithm>
#include <set>

#include "app/acts/LivingTargets.h"
#include "app/model/AppModelPrivate.h"
#include "app/tasks/Sleep.h"
#include "app/tasks/Wait.h"
#include "core/sampling/ForceQuitTargets.h"

namespace tolvane {

namespace {

/// Ten seconds in all, as people know it from elsewhere.
constexpr Seconds politePatience{10};
/// What the kernel takes to clear away even a large process.
constexpr Seconds afterKill{0.3};

/// Of the processes that the sample holds: without a start time one cannot be told from a later one of its number.
std::vector<Incarnation> incarnationsOf(const std::vector<Pid>& pids, const std::vector<ProcRow>& rows) {
    std::vector<Incarnation> found;
    for (const Pid pid : pids) {
        const auto row = std::ranges::find(rows, pid, &ProcRow::id);
        if (row != rows.end()) found.push_back({.pid = pid, .startTime = row->sample.startTime});
    }
    return found;
}

/// What came of each call shows when the processes are read again.
void sendAll(ProcessControl& control, Signal signal, const std::vector<Incarnation>& targets) {
    for (const auto& target : targets) control.send(signal, target);
}

}  // namespace

QCoro::Task<bool> AppModel::terminate(std::vector<Pid> pids, bool force) {
    const auto cancellation = d_->tasks.token();
    LivingTargets targets(host(), incarnationsOf(pids, snapshot->rows));
    sendAll(*host().control, force ? Signal::kill : Signal::terminate, targets.all());
    if (force) co_return true;
    const auto areGone = [&targets] { return !targets.anyAlive(); };
    const auto end = co_await waitUntil(*host().clock, areGone, politePatience, cancellation);
    if (end != WaitEnd::patienceOver) co_return end == WaitEnd::held;
    sendAll(*host().control, Signal::kill, targets.alive());
    if (co_await Sleep(*host().clock, afterKill, Seconds{0}, cancellation) == Awoken::cancelled) co_return false;
    co_return !targets.anyAlive();
}

std::vector<std::shared_ptr<RunningApplication>> AppModel::runningApps(const std::vector<Pid>& pids) const {
    std::set<std::string> identifiers;
    for (const auto& row : snapshot->rows) {
        if (row.appID && std::ranges::find(pids, row.id()) != pids.end()) identifiers.insert(row.appID->str());
    }
    std::vector<std::shared_ptr<RunningApplication>> apps;
    for (const auto& identifier : identifiers) {
        auto instances = host().running->withAppID(identifier);
        std::ranges::move(instances, std::back_inserter(apps));
    }
    return apps;
}

void AppModel::forceQuit(const std::vector<TableRow>& lines) {
    std::vector<ForceQuitItem> items;
    for (const auto& line : lines) {
        const bool isApp = line.appPath && host().applications->appID(*line.appPath);
        items.push_back({.pids = line.pids, .isApp = isApp});
    }
    const auto targets = forceQuitTargets(items);
    for (const auto& app : runningApps(targets.apps)) app->forceTerminate();
    static_cast<void>(terminate(targets.others, true));
}

}  // namespace tolvane
