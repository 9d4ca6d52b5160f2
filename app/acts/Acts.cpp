#include "app/acts/Acts.h"

#include <utility>

namespace tolvane {

Acts::Acts(Host& host, ActState& state, BackgroundJobs& background, const CancelSource& tasks)
    : host_(host), state_(state), background_(background), tasks_(tasks) {}

QCoro::Task<Outcome> Acts::perform(RuleAction action, ActTarget target) {
    switch (action) {
        case RuleAction::notify:
            break;
        case RuleAction::terminate:
            co_return co_await terminate(std::move(target));
        case RuleAction::quit:
            co_return co_await quit(std::move(target));
        case RuleAction::relaunch:
            co_return co_await relaunch(std::move(target));
        case RuleAction::lowerPriority:
            co_return lowerPriority(target);
    }
    co_return Outcome::of(Outcome::Kind::notified, target.title);
}

}  // namespace tolvane
