#include "app/acts/QuitWait.h"

#include <algorithm>

#include "app/tasks/Sleep.h"

namespace tolvane {

namespace {

constexpr Seconds roundLength{0.5};

}  // namespace

bool allTerminated(const RunningApps& apps) {
    return std::ranges::all_of(apps, [](const auto& app) { return app->isTerminated(); });
}

QCoro::Task<bool> quitAndWait(Clock& clock, RunningApps apps, int rounds, std::stop_token cancellation) {
    for (const auto& app : apps) app->terminate();
    for (int round = 0; round < rounds && !allTerminated(apps); ++round) {
        const auto awoken = co_await Sleep(clock, roundLength, Seconds{0}, cancellation);
        if (awoken == Awoken::cancelled) co_return false;
    }
    co_return allTerminated(apps);
}

}  // namespace tolvane
