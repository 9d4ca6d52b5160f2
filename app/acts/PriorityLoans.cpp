#include <algorithm>
#include <utility>

#include "app/acts/Acts.h"

namespace tolvane {

Outcome Acts::lowerPriority(const ActTarget& target) {
    const Date now = host_.clock->now();
    auto loans = state_.loans();
    bool any = false;
    for (const auto& process : incarnationsOf(target.pids)) {
        if (!host_.control->lowerPriority(process)) continue;
        loans.insert_or_assign(process.pid, Lowered{.start = process.startTime, .at = now});
        any = true;
    }
    state_.setLoans(std::move(loans));
    return Outcome::of(any ? Outcome::Kind::lowered : Outcome::Kind::notLowered, target.title);
}

void Acts::restorePriority(const std::vector<Pid>& pids) {
    auto loans = state_.loans();
    for (const Pid pid : pids) {
        const auto loan = loans.find(pid);
        if (loan == loans.end()) continue;
        // A host that refuses once would refuse again.
        static_cast<void>(host_.control->restorePriority({.pid = pid, .startTime = loan->second.start}));
        loans.erase(loan);
    }
    state_.setLoans(std::move(loans));
}

void Acts::restoreAllPriorities() {
    std::vector<Pid> pids;
    for (const auto& [pid, loan] : state_.loans()) pids.push_back(pid);
    restorePriority(pids);
}

}  // namespace tolvane
