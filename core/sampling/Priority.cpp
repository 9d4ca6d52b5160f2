#include "core/sampling/Priority.h"

namespace tolvane::Priority {

namespace {

using RowsByPid = std::map<Pid, const ProcRow*>;

/// The rows whose pids were lowered.
RowsByPid bearers(const std::map<Pid, Lowered>& lowered, const std::vector<ProcRow>& rows) {
    RowsByPid result;
    for (const auto& row : rows) {
        if (lowered.contains(row.id())) result.try_emplace(row.id(), &row);
    }
    return result;
}

}  // namespace

Review review(const std::map<Pid, Lowered>& lowered, const std::vector<ProcRow>& rows) {
    Review result;
    if (lowered.empty()) return result;
    const auto present = bearers(lowered, rows);
    for (const auto& [pid, loan] : lowered) {
        const auto found = present.find(pid);
        if (found == present.end() || found->second->sample.startTime != loan.start) {
            result.gone.push_back(pid);
        } else if (found->second->unusedSince > loan.at) {
            result.restore.push_back(pid);
        }
    }
    return result;
}

}  // namespace tolvane::Priority
