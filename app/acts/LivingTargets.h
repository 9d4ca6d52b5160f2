#pragma once

#include <vector>

#include "platform/Host.h"

namespace tolvane {

/// Processes that are to end, and which of them are still alive. Each call reads them again and keeps nothing open
/// afterwards: a thousand may be waited for at once. A process that reuses the pid of a target does not count.
/// Main thread; `host` outlives it.
class LivingTargets {
public:
    LivingTargets(const Host& host, std::vector<Incarnation> targets);

    const std::vector<Incarnation>& all() const { return targets_; }
    /// In the order of `all`.
    std::vector<Incarnation> alive() const;
    bool anyAlive() const;

private:
    const Host& host_;
    std::vector<Incarnation> targets_;
};

}  // namespace tolvane
