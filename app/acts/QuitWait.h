#pragma once

#include <QCoroTask>
#include <memory>
#include <stop_token>
#include <vector>

#include "platform/Clock.h"
#include "platform/RunningApplications.h"

namespace tolvane {

using RunningApps = std::vector<std::shared_ptr<RunningApplication>>;

/// Ten seconds: an application that asks its user something is not waited for any longer.
inline constexpr int quitRounds = 20;

/// True also when there are none.
bool allTerminated(const RunningApps& apps);

/// Asks each of them to quit, and waits half a second at a time, `rounds` times at most, until all have ended. Gives
/// whether they have; a wait that is cancelled ends at once, with false. Main thread; the clock outlives it.
QCoro::Task<bool> quitAndWait(Clock& clock, RunningApps apps, int rounds, std::stop_token cancellation);

}  // namespace tolvane
