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
inline constexpr Seconds quitPatience{10};

/// True also when there are none.
bool allTerminated(const RunningApps& apps);

/// Asks each of them to quit and waits until all have ended, `patience` at most. Returns whether they have; a wait that
/// is cancelled ends at once, with false. Main thread; the clock outlives it.
QCoro::Task<bool> quitAndWait(Clock& clock, RunningApps apps, Seconds patience, std::stop_token cancellation);

}  // namespace tolvane
