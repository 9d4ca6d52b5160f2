#include "app/tasks/Wait.h"

#include "app/tasks/Sleep.h"

namespace tolvane {

namespace {

constexpr Seconds betweenQuestions{0.5};

}  // namespace

/// Adds up the time slept instead of comparing dates, since the clock may be set meanwhile.
QCoro::Task<WaitEnd> waitUntil(Clock& clock, std::function<bool()> condition, Seconds patience,
                               std::stop_token cancellation) {
    for (Seconds slept{0}; !condition(); slept += betweenQuestions) {
        if (slept >= patience) co_return WaitEnd::patienceOver;
        const auto awoken = co_await Sleep(clock, betweenQuestions, Seconds{0}, cancellation);
        if (awoken == Awoken::cancelled) co_return WaitEnd::cancelled;
    }
    co_return WaitEnd::held;
}

}  // namespace tolvane
