#include <QCoroTask>

#include "app/acts/AppLaunch.h"
#include "app/acts/Outcome.h"
#include "app/acts/QuitWait.h"
#include "app/model/AppModelPrivate.h"

namespace tolvane {

namespace {

/// Half a minute: an application that saves much, or asks, needs longer than one that a rule only quits.
constexpr Seconds relaunchPatience{30};

}  // namespace

QCoro::Task<std::string> AppModel::relaunch(std::vector<Pid> pids) {
    const auto cancellation = d_->tasks.token();
    const auto apps = runningApps(pids);
    const auto appPath = apps.empty() ? std::nullopt : apps.front()->appPath();
    if (!appPath) co_return "Not running";
    const bool allQuit = co_await quitAndWait(*host().clock, apps, relaunchPatience, cancellation);
    if (cancellation.stop_requested()) co_return std::string();
    if (!allQuit) co_return "Did not quit, it may have unsaved changes";
    const auto error = co_await AppLaunch(*host().running, *appPath, cancellation);
    if (cancellation.stop_requested()) co_return std::string();
    co_return error ? "Quit, relaunch failed: " + *error : std::string(Outcome::relaunchedText);
}

}  // namespace tolvane
