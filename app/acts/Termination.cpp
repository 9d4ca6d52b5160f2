#include <algorithm>

#include "app/acts/Acts.h"
#include "app/acts/LivingTargets.h"
#include "app/tasks/Sleep.h"
#include "core/sampling/ForceQuitTargets.h"

namespace tolvane {

namespace {

using Kind = Outcome::Kind;

/// The grace period that users know from other programs.
constexpr Seconds politePatience{10};
/// What the kernel takes to clear away even a large process.
constexpr Seconds afterKill{0.3};
/// The same, with room to spare.
constexpr Seconds afterForceQuit{1.0};

std::vector<ForceQuitItem> itemsOf(const std::vector<ActTarget>& targets, Applications& applications) {
    std::vector<ForceQuitItem> items;
    for (const auto& target : targets) {
        const bool isApp = target.appPath && applications.appID(*target.appPath);
        items.push_back({.pids = target.pids, .isApp = isApp});
    }
    return items;
}

}  // namespace

QCoro::Task<Outcome> Acts::terminate(ActTarget target) {
    const LivingTargets processes(host_, incarnationsOf(target.pids));
    send(Signal::terminate, processes.all());
    const auto areGone = [&processes] { return !processes.anyAlive(); };
    const auto end = co_await waitUntil(*host_.clock, areGone, politePatience, tasks_.token());
    if (end == WaitEnd::cancelled) co_return Outcome::cancelled();
    if (end == WaitEnd::held) co_return Outcome::of(Kind::terminated, target.title);
    send(Signal::kill, processes.alive());
    const auto awoken = co_await Sleep(*host_.clock, afterKill, Seconds{0}, tasks_.token());
    if (awoken == Awoken::cancelled) co_return Outcome::cancelled();
    co_return Outcome::of(processes.anyAlive() ? Kind::stillRunning : Kind::terminated, target.title);
}

QCoro::Task<std::vector<Outcome>> Acts::forceQuit(std::vector<ActTarget> targets) {
    std::vector<LivingTargets> processes;
    for (const auto& target : targets) processes.emplace_back(host_, incarnationsOf(target.pids));
    const auto ways = forceQuitTargets(itemsOf(targets, *host_.applications));
    for (const auto& app : runningApps(ways.apps)) app->forceTerminate();
    send(Signal::kill, incarnationsOf(ways.others));
    // Neither call reports whether it was permitted, so check which processes are still alive.
    const auto awoken = co_await Sleep(*host_.clock, afterForceQuit, Seconds{0}, tasks_.token());
    std::vector<Outcome> outcomes;
    if (awoken == Awoken::cancelled) co_return outcomes;
    for (std::size_t number = 0; number < targets.size(); ++number) {
        const auto kind = processes[number].anyAlive() ? Kind::stillRunning : Kind::terminated;
        outcomes.push_back(Outcome::of(kind, targets[number].title));
    }
    co_return outcomes;
}

/// Only pids in the sample: its start time distinguishes a process from a later one with the same pid.
std::vector<Incarnation> Acts::incarnationsOf(const std::vector<Pid>& pids) const {
    const auto& rows = state_.rows();
    std::vector<Incarnation> found;
    for (const Pid pid : pids) {
        const auto row = std::ranges::find(rows, pid, &ProcRow::id);
        if (row != rows.end()) found.push_back({.pid = pid, .startTime = row->sample.startTime});
    }
    return found;
}

/// Ignores each result: reading the processes again shows which have ended.
void Acts::send(Signal signal, const std::vector<Incarnation>& processes) const {
    for (const auto& process : processes) host_.control->send(signal, process);
}

}  // namespace tolvane
