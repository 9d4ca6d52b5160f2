#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "app/acts/Acts.h"
#include "app/acts/AppLaunch.h"

namespace tolvane {

namespace {

using Kind = Outcome::Kind;

/// An application that asks its user something may take longer; it is not waited for.
constexpr Seconds quitPatience{10};
/// Longer than for quitting: the application may save much, or ask its user.
constexpr Seconds relaunchPatience{30};

}  // namespace

QCoro::Task<Outcome> Acts::quit(ActTarget target) {
    auto apps = runningApps(target.pids);
    if (apps.empty()) co_return Outcome::of(Kind::notRunning, target.title);
    const auto end = co_await askToQuit(std::move(apps), quitPatience);
    if (end == WaitEnd::cancelled) co_return Outcome::cancelled();
    co_return Outcome::of(end == WaitEnd::held ? Kind::quit : Kind::askedToQuit, target.title);
}

QCoro::Task<Outcome> Acts::relaunch(ActTarget target) {
    const auto cancellation = tasks_.token();
    const auto apps = runningApps(target.pids);
    // Read before quitting: an application that has ended no longer reports its path.
    const auto appPath = apps.empty() ? std::nullopt : apps.front()->appPath();
    if (!appPath) co_return Outcome::of(Kind::nothingToRelaunch, target.title);
    const auto end = co_await askToQuit(apps, relaunchPatience);
    if (end == WaitEnd::cancelled) co_return Outcome::cancelled();
    if (end == WaitEnd::patienceOver) co_return Outcome::of(Kind::stayedOpen, target.title);
    const auto error = co_await AppLaunch(*host_.running, *appPath, cancellation);
    if (cancellation.stop_requested()) co_return Outcome::cancelled();
    if (error) co_return Outcome::of(Kind::notReopened, target.title, {*error});
    auto outcome = Outcome::of(Kind::relaunched, target.title);
    outcome.relaunchedApp = appPath;
    co_return outcome;
}

QCoro::Task<WaitEnd> Acts::askToQuit(RunningApps apps, Seconds patience) {
    for (const auto& app : apps) app->terminate();
    const auto areGone = [&apps] {
        return std::ranges::all_of(apps, [](const auto& app) { return app->isTerminated(); });
    };
    co_return co_await waitUntil(*host_.clock, areGone, patience, tasks_.token());
}

RunningApps Acts::runningApps(const std::vector<Pid>& pids) const {
    std::set<std::string> identifiers;
    for (const auto& row : state_.rows()) {
        if (row.appID && std::ranges::find(pids, row.id()) != pids.end()) identifiers.insert(row.appID->str());
    }
    RunningApps apps;
    for (const auto& identifier : identifiers) {
        auto instances = host_.running->withAppID(identifier);
        std::ranges::move(instances, std::back_inserter(apps));
    }
    return apps;
}

}  // namespace tolvane
