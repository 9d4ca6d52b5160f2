#pragma once

#include <memory>
#include <vector>

#include "core/sampling/ProcessReader.h"
#include "platform/Host.h"

namespace tolvane {

/// Processes that are to end, and which of them still live. Reads afresh at each question; a process that bears the
/// number of one that ended is another. Main thread; `host` outlives it.
class LivingTargets {
public:
    LivingTargets(const Host& host, std::vector<Incarnation> targets);

    const std::vector<Incarnation>& all() const { return targets_; }
    /// In the order of `all`.
    std::vector<Incarnation> alive();
    bool anyAlive();

private:
    bool isAlive(const Incarnation& target);

    std::vector<Incarnation> targets_;
    std::unique_ptr<ProcessInspection> inspection_;
    ProcessReader reader_;
};

}  // namespace tolvane
