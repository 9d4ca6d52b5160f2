#include "core/projects/Projects.h"

#include <algorithm>
#include <unordered_set>

namespace tolvane::Projects {

std::vector<ProcRow> roots(const std::vector<ProcRow>& rows) {
    std::unordered_set<Pid> pids;
    for (const auto& row : rows) pids.insert(row.id());
    std::vector<ProcRow> result;
    std::ranges::copy_if(rows, std::back_inserter(result),
                         [&](const ProcRow& row) { return !pids.contains(row.sample.ppid); });
    return result;
}

}  // namespace tolvane::Projects
