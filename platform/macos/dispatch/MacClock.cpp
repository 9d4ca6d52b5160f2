#include "platform/macos/dispatch/MacClock.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <utility>

#include "platform/macos/dispatch/MainSource.h"

namespace tolvane::machost {

namespace {

constexpr double nanosPerSecond = 1e9;
/// Thirty years: longer than any wait, and its nanoseconds still fit.
constexpr double longestWait = 1e9;

/// Rounded up, so a wait never ends early. NaN means no wait.
std::int64_t nanosOf(Seconds span) {
    const double seconds = span.count() > 0 ? std::min(span.count(), longestWait) : 0;
    return static_cast<std::int64_t>(std::ceil(seconds * nanosPerSecond));
}

}  // namespace

MacClock::MacClock(Dispatch dispatch, OnMain onMain) : dispatch_(std::move(dispatch)), onMain_(std::move(onMain)) {}

Date MacClock::now() const {
    timespec time{};
    ::clock_gettime(CLOCK_REALTIME, &time);
    return dateFromUnixSeconds(static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / nanosPerSecond);
}

Subscription MacClock::after(Seconds delay, Seconds tolerance, std::function<void()> passed) {
    return onEvent(
        dispatch_, onMain_,
        {.kind = SourceKind::timer, .delay = nanosOf(delay), .leeway = static_cast<std::uint64_t>(nanosOf(tolerance))},
        std::move(passed));
}

}  // namespace tolvane::machost
