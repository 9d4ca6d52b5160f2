#pragma once

#include <QCoroTask>
#include <functional>
#include <stop_token>

#include "platform/Clock.h"

namespace tolvane {

/// How a wait for a condition ended.
enum class WaitEnd { held, patienceOver, cancelled };

/// Asks `condition` now and every half second until it holds, and a last time when `patience` has passed. Cancelling
/// ends the wait at once; a coroutine that was cancelled must end without touching what it works for, and `condition`
/// is not asked again. Main thread; the clock and whatever `condition` refers to outlive the wait.
QCoro::Task<WaitEnd> waitUntil(Clock& clock, std::function<bool()> condition, Seconds patience,
                               std::stop_token cancellation);

}  // namespace tolvane
