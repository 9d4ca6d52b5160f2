#include "app/model/AppModelPrivate.h"
#include "app/preferences/AppPreferences.h"
#include "app/tasks/Sleep.h"

namespace tolvane {

namespace {

/// Between ticks while no window is visible.
constexpr Seconds closedInterval{60.0};
/// A tick may be late by the interval divided by this, so that the machine can wake for several timers at once.
constexpr double tolerancePart = 5.0;

}  // namespace

void AppModel::Private::restartLoop() {
    if (demo) return;
    loop.renew();
    static_cast<void>(runLoop(loop.token()));
}

void AppModel::Private::resample() {
    if (windowVisible) restartLoop();
}

QCoro::Task<> AppModel::Private::runLoop(std::stop_token cancellation) {
    while (!cancellation.stop_requested()) {
        co_await tick();
        if (cancellation.stop_requested()) co_return;
        const Seconds pause = interval();
        co_await Sleep(*host.clock, pause, pause / tolerancePart, cancellation);
    }
}

Seconds AppModel::Private::interval() const {
    if (!windowVisible) return closedInterval;
    return Seconds{static_cast<double>(AppPreferences::openInterval.in(*host.preferences))};
}

void AppModel::Private::updateVisibility() {
    const bool visible = windows.anyVisible();
    if (visible == windowVisible) return;
    windowVisible = visible;
    if (visible) restartLoop();
}

}  // namespace tolvane
