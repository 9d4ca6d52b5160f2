#include "app/screens/processes/SelectionInspector.h"

#include <set>

#include "app/rows/Format.h"

namespace tolvane {

namespace {

void collectBelow(const TableRow& row, std::set<std::string_view>& ids) {
    if (!row.children) return;
    for (const auto& child : *row.children) {
        ids.insert(child.id);
        collectBelow(child, ids);
    }
}

struct Sums {
    std::uint64_t memory = 0;
    double cpu = 0;
    std::set<Pid> pids;
};

Sums sumsOf(const std::vector<TableRow>& rows) {
    std::set<std::string_view> below;
    for (const auto& row : rows) collectBelow(row, below);
    Sums sums;
    for (const auto& row : rows) {
        if (below.contains(row.id)) continue;
        sums.memory += row.memory;
        sums.cpu += row.cpu;
        sums.pids.insert(row.pids.begin(), row.pids.end());
    }
    return sums;
}

}  // namespace

SelectionInspector SelectionInspector::of(const std::vector<TableRow>& rows, std::string_view locale) {
    const auto sums = sumsOf(rows);
    const auto processes = static_cast<double>(sums.pids.size());
    SelectionInspector inspector{
        .title = std::to_string(rows.size()) + " selected",
        .forceQuit = {.title = ProcessActions::forceQuitItems(rows.size()),
                      .action = ProcessAction::forceQuit,
                      .shortcut = 'q'},
        .figures = {{.label = "Memory", .value = Format::bytes(sums.memory, locale)},
                    {.label = "CPU", .value = Format::decimal(sums.cpu, 1, 1, locale) + " %"},
                    {.label = "Processes", .value = Format::decimal(processes, 0, 0, locale)}}};
    for (const auto& row : rows) {
        inspector.lines.push_back({.label = row.title, .value = Format::bytes(row.memory, locale)});
    }
    return inspector;
}

}  // namespace tolvane
