#include "tests/fakes/VirtualClock.h"

namespace tolvane::fakes {

Subscription VirtualClock::after(Seconds delay, Seconds tolerance, std::function<void()> passed) {
    latestDelay_ = delay;
    latestTolerance_ = tolerance;
    const Key key{elapsed_ + delay, ++number_};
    waiters_->emplace(key, std::move(passed));
    return Subscription([weak = std::weak_ptr(waiters_), key] {
        if (const auto waiters = weak.lock()) waiters->erase(key);
    });
}

void VirtualClock::advance(Seconds span) {
    const Seconds end = elapsed_ + span;
    while (!waiters_->empty() && waiters_->begin()->first.due <= end) {
        auto first = waiters_->extract(waiters_->begin());
        now_ = now() + (first.key().due - elapsed_);
        elapsed_ = first.key().due;
        first.mapped()();
    }
    now_ = now() + (end - elapsed_);
    elapsed_ = end;
}

}  // namespace tolvane::fakes
