#include "core/sampling/ChildIndex.h"

#include <algorithm>
#include <set>

namespace tolvane {

ChildIndex::ChildIndex(const std::vector<ProcRow>& rows) : rows_(rows) {
    children_.reserve(rows.size());
    for (const auto& row : rows) {
        children_.push_back({.ppid = row.sample.ppid, .row = static_cast<std::uint32_t>(children_.size())});
    }
    std::ranges::sort(children_);
}

std::vector<Pid> ChildIndex::descendants(Pid pid) const {
    std::vector<Pid> result;
    std::vector<Pid> waiting{pid};
    std::set<Pid> opened;
    while (!waiting.empty()) {
        const Pid parent = waiting.back();
        waiting.pop_back();
        if (!opened.insert(parent).second) continue;
        const auto first = static_cast<std::ptrdiff_t>(result.size());
        appendChildren(parent, pid, result);
        waiting.insert(waiting.end(), result.begin() + first, result.end());
    }
    return result;
}

void ChildIndex::appendChildren(Pid parent, Pid root, std::vector<Pid>& pids) const {
    for (const auto& child : std::ranges::equal_range(children_, parent, {}, &Child::ppid)) {
        const Pid pid = rows_[child.row].sample.pid;
        if (pid != root) pids.push_back(pid);
    }
}

}  // namespace tolvane
