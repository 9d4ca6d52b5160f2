#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "core/rules/Decision.h"
#include "core/rules/Rule.h"
#include "core/rules/World.h"

namespace tolvane {

/// One rule that looks for its subjects in a world, and what it found. Refers to its rule.
struct Ask {
    const Rule* rule = nullptr;
    Date now;
    /// A subject must have been unused for so long.
    std::optional<Seconds> unused;
    /// A subject must hold so many bytes.
    std::uint64_t memory = 0;
    /// Processes of applications are left alone.
    bool sparesApplications = false;
    /// The subjects that fit, in order.
    std::vector<Decision> found;

    /// Asks for every subject.
    static Ask all(const Rule& rule);
    /// Asks for those that meet the rule's conditions; none where a condition cannot be met.
    static std::optional<Ask> due(const Rule& rule, Date now);

    bool fits(Date unusedSince, std::uint64_t bytes) const {
        return bytes >= memory && (!unused || now - unusedSince >= *unused);
    }
    void add(Decision decision) {
        if (fits(decision.unusedSince, decision.memory)) found.push_back(std::move(decision));
    }
};

/// Whether rules may ever touch the process: this user's, not one of the first two, not this program.
inline bool mayTouch(const ProcSample& sample, const World& world) {
    return sample.uid == world.uid && sample.pid >= 2 && sample.pid != world.selfPID;
}

}  // namespace tolvane
