#pragma once

#include <QCoroTask>
#include <functional>
#include <stop_token>

#include "platform/Clock.h"

namespace tolvane {

/// How a wait for a condition ended.
enum class WaitEnd { held, patienceOver, cancelled };

/// Asks `condition` now, then every half second until it holds, and for the last time when `patience` has passed.
/// Cancelling ends the wait at once, without asking again; a cancelled coroutine must return without touching its
/// owner. Main thread; the clock and everything that `condition` refers to outlive the wait.
QCoro::Task<WaitEnd> waitUntil(Clock& clock, std::function<bool()> condition, Seconds patience,
                               std::stop_token cancellation);

}  // namespace tolvane
