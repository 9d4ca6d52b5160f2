#include "app/acts/QuitWait.h"

#include <algorithm>

#include "app/tasks/Wait.h"

namespace tolvane {

bool allTerminated(const RunningApps& apps) {
    return std::ranges::all_of(apps, [](const auto& app) { return app->isTerminated(); });
}

QCoro::Task<bool> quitAndWait(Clock& clock, RunningApps apps, Seconds patience, std::stop_token cancellation) {
    for (const auto& app : apps) app->terminate();
    const auto end = co_await waitUntil(clock, [&apps] { return allTerminated(apps); }, patience, cancellation);
    co_return end == WaitEnd::held;
}

}  // namespace tolvane
