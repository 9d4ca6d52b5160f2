#include "app/screens/processes/RowProcesses.h"

#include <algorithm>
#include <unordered_set>

namespace tolvane::RowProcesses {

namespace {

void collectLives(const TableRow& line, std::vector<Incarnation>& found) {
    if (line.children) {
        for (const auto& child : *line.children) collectLives(child, found);
    } else if (line.started && !line.pids.empty()) {
        found.push_back({.pid = line.pids.front(), .startTime = *line.started});
    }
}

}  // namespace

std::vector<const ProcRow*> all(const TableRow& line, const std::vector<ProcRow>& rows) {
    const std::unordered_set<Pid> pids(line.pids.begin(), line.pids.end());
    std::vector<const ProcRow*> found;
    for (const auto& row : rows) {
        if (pids.contains(row.id())) found.push_back(&row);
    }
    return found;
}

const ProcRow* own(const TableRow& line, const std::vector<ProcRow>& rows) {
    return line.children || line.pids.empty() ? nullptr : ofPid(line.pids.front(), rows);
}

const ProcRow* ofPid(Pid pid, const std::vector<ProcRow>& rows) {
    const auto found = std::ranges::find(rows, pid, &ProcRow::id);
    return found == rows.end() ? nullptr : &*found;
}

std::vector<Incarnation> lives(const TableRow& line) {
    std::vector<Incarnation> found;
    collectLives(line, found);
    return found;
}

TableRow present(TableRow line, const std::vector<ProcRow>& rows) {
    const auto shown = lives(line);
    const auto livesOn = [&](Pid pid) {
        const auto* row = ofPid(pid, rows);
        return row && std::ranges::find(shown, Incarnation{pid, row->sample.startTime}) != shown.end();
    };
    std::erase_if(line.pids, [&](Pid pid) { return !livesOn(pid); });
    return line;
}

}  // namespace tolvane::RowProcesses
