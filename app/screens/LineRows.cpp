#include "app/screens/LineRows.h"

#include <algorithm>
#include <unordered_set>

namespace tolvane::LineRows {

std::vector<const ProcRow*> all(const Line& line, const std::vector<ProcRow>& rows) {
    const std::unordered_set<Pid> pids(line.pids.begin(), line.pids.end());
    std::vector<const ProcRow*> found;
    for (const auto& row : rows) {
        if (pids.contains(row.id())) found.push_back(&row);
    }
    return found;
}

const ProcRow* own(const Line& line, const std::vector<ProcRow>& rows) {
    return line.children || line.pids.empty() ? nullptr : ofPid(line.pids.front(), rows);
}

const ProcRow* ofPid(Pid pid, const std::vector<ProcRow>& rows) {
    const auto found = std::ranges::find(rows, pid, &ProcRow::id);
    return found == rows.end() ? nullptr : &*found;
}

}  // namespace tolvane::LineRows
