#include "core/sampling/ForceQuitTargets.h"

#include <set>

namespace tolvane {

namespace {

std::vector<Pid> takeUnseen(const std::vector<ForceQuitItem>& items, bool apps, std::set<Pid>& seen) {
    std::vector<Pid> result;
    for (const auto& item : items) {
        if (item.isApp != apps) continue;
        for (const Pid pid : item.pids) {
            if (seen.insert(pid).second) result.push_back(pid);
        }
    }
    return result;
}

}  // namespace

ForceQuitTargets forceQuitTargets(const std::vector<ForceQuitItem>& items) {
    std::set<Pid> seen;
    auto apps = takeUnseen(items, true, seen);
    return {.apps = std::move(apps), .others = takeUnseen(items, false, seen)};
}

}  // namespace tolvane
