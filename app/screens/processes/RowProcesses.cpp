#include "app/screens/processes/RowProcesses.h"

#include <algorithm>
#include <unordered_set>

namespace tolvane::RowProcesses {

namespace {

void collectLives(const TableRow& tableRow, std::vector<Incarnation>& found) {
    if (tableRow.children) {
        for (const auto& child : *tableRow.children) collectLives(child, found);
    } else if (tableRow.started && !tableRow.pids.empty()) {
        found.push_back({.pid = tableRow.pids.front(), .startTime = *tableRow.started});
    }
}

}  // namespace

std::vector<const ProcRow*> all(const TableRow& tableRow, const std::vector<ProcRow>& rows) {
    const std::unordered_set<Pid> pids(tableRow.pids.begin(), tableRow.pids.end());
    std::vector<const ProcRow*> found;
    for (const auto& row : rows) {
        if (pids.contains(row.id())) found.push_back(&row);
    }
    return found;
}

const ProcRow* own(const TableRow& tableRow, const std::vector<ProcRow>& rows) {
    return tableRow.children || tableRow.pids.empty() ? nullptr : ofPid(tableRow.pids.front(), rows);
}

const ProcRow* ofPid(Pid pid, const std::vector<ProcRow>& rows) {
    const auto found = std::ranges::find(rows, pid, &ProcRow::id);
    return found == rows.end() ? nullptr : &*found;
}

std::vector<Incarnation> lives(const TableRow& tableRow) {
    std::vector<Incarnation> found;
    collectLives(tableRow, found);
    return found;
}

TableRow present(TableRow tableRow, const std::vector<ProcRow>& rows) {
    const auto shown = lives(tableRow);
    const auto livesOn = [&](Pid pid) {
        const auto* row = ofPid(pid, rows);
        return row && std::ranges::find(shown, Incarnation{pid, row->sample.startTime}) != shown.end();
    };
    std::erase_if(tableRow.pids, [&](Pid pid) { return !livesOn(pid); });
    return tableRow;
}

}  // namespace tolvane::RowProcesses
