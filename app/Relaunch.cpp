#include <QCoroTask>

#include "app/AppModelPrivate.h"
#include "app/Opening.h"
#include "app/Outcome.h"
#include "app/QuitWait.h"

namespace tolvane {

namespace {

/// Half a minute: an application that saves much, or asks, needs longer than one that a rule only quits.
constexpr int relaunchRounds = 60;

}  // namespace

QCoro::Task<std::string> AppModel::relaunch(std::vector<Pid> pids) {
    const auto cancellation = d_->tasks.token();
    const auto apps = runningApps(pids);
    const auto bundlePath = apps.empty() ? std::nullopt : apps.front()->bundlePath();
    if (!bundlePath) co_return "Not running";
    const bool allQuit = co_await quitAndWait(*host().clock, apps, relaunchRounds, cancellation);
    if (cancellation.stop_requested()) co_return std::string();
    if (!allQuit) co_return "Did not quit, it may have unsaved changes";
    const auto error = co_await Opening(*host().running, *bundlePath, cancellation);
    if (cancellation.stop_requested()) co_return std::string();
    co_return error ? "Quit, relaunch failed: " + *error : std::string(Outcome::relaunchedWord);
}

}  // namespace tolvane
