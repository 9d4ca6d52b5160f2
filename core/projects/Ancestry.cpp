#include "core/projects/Ancestry.h"

#include <utility>

namespace tolvane {

Ancestry::Ancestry(const std::vector<ProcRow>& rows) {
    nodes_.reserve(rows.size());
    for (const auto& row : rows) nodes_[row.id()].sample = &row.sample;
}

bool Ancestry::visit(Pid pid) { return std::exchange(nodes_[pid].walk, walk_) != walk_; }

const ProcSample* Ancestry::parentOf(const ProcSample& sample) const {
    if (sample.ppid < 2) return nullptr;
    const auto found = nodes_.find(sample.ppid);
    return found == nodes_.end() ? nullptr : found->second.sample;
}

}  // namespace tolvane
