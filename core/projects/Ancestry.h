#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "core/sampling/ProcRow.h"

namespace tolvane {

/// Walks from processes up to those that started them. Refers to the rows, which outlive it.
class Ancestry {
public:
    /// Of rows that repeat a pid the last is the parent.
    explicit Ancestry(const std::vector<ProcRow>& rows);

    /// Whether the test holds for the sample or for one above it. The walk ends below pid 2, at a parent that has no
    /// row, and where it would go round.
    template <typename Test>
    bool anyOf(const ProcSample& sample, const Test& test) {
        ++walk_;
        for (const ProcSample* each = &sample; each && visit(each->pid); each = parentOf(*each)) {
            if (test(*each)) return true;
        }
        return false;
    }

private:
    struct Node {
        const ProcSample* sample = nullptr;
        /// The latest walk that came by.
        std::uint64_t walk = 0;
    };

    /// False when this walk was there before.
    bool visit(Pid pid);
    const ProcSample* parentOf(const ProcSample& sample) const;

    std::unordered_map<Pid, Node> nodes_;
    std::uint64_t walk_ = 0;
};

}  // namespace tolvane
