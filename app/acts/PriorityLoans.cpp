#include <algorithm>

#include "app/model/AppModelPrivate.h"
#include "core/sampling/Priority.h"

namespace tolvane {

bool AppModel::lowerPriority(const std::vector<Pid>& pids) {
    const Date now = host().clock->now();
    const auto& rows = snapshot->rows;
    auto loans = *lowered;
    bool any = false;
    for (const Pid pid : pids) {
        const auto row = std::ranges::find(rows, pid, &ProcRow::id);
        if (row == rows.end()) continue;
        const Date start = row->sample.startTime;
        if (!host().control->lowerPriority({.pid = pid, .startTime = start})) continue;
        loans.insert_or_assign(pid, Lowered{.start = start, .at = now});
        any = true;
    }
    lowered.set(std::move(loans));
    return any;
}

void AppModel::restorePriority(const std::vector<Pid>& pids) {
    auto loans = *lowered;
    for (const Pid pid : pids) {
        const auto loan = loans.find(pid);
        if (loan == loans.end()) continue;
        // What the host refuses to give back it would refuse again.
        static_cast<void>(host().control->restorePriority({.pid = pid, .startTime = loan->second.start}));
        loans.erase(loan);
    }
    lowered.set(std::move(loans));
}

void AppModel::prepareToQuit() {
    std::vector<Pid> pids;
    for (const auto& [pid, loan] : *lowered) pids.push_back(pid);
    restorePriority(pids);
}

}  // namespace tolvane
