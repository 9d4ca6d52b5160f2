#include "app/screens/processes/SelectionInspector.h"

#include <set>

#include "app/rows/Format.h"

namespace tolvane {

namespace {

void collectBelow(const TableRow& line, std::set<std::string_view>& ids) {
    if (!line.children) return;
    for (const auto& child : *line.children) {
        ids.insert(child.id);
        collectBelow(child, ids);
    }
}

struct Sums {
    std::uint64_t memory = 0;
    double cpu = 0;
    std::set<Pid> pids;
};

Sums sumsOf(const std::vector<TableRow>& lines) {
    std::set<std::string_view> below;
    for (const auto& line : lines) collectBelow(line, below);
    Sums sums;
    for (const auto& line : lines) {
        if (below.contains(line.id)) continue;
        sums.memory += line.memory;
        sums.cpu += line.cpu;
        sums.pids.insert(line.pids.begin(), line.pids.end());
    }
    return sums;
}

}  // namespace

SelectionInspector SelectionInspector::of(const std::vector<TableRow>& lines, std::string_view locale) {
    const auto sums = sumsOf(lines);
    const auto processes = static_cast<double>(sums.pids.size());
    SelectionInspector inspector{
        .title = std::to_string(lines.size()) + " selected",
        .forceQuit = {.title = ProcessActions::forceQuitItems(lines.size()),
                      .action = ProcessAction::forceQuit,
                      .shortcut = 'q'},
        .figures = {{.label = "Memory", .value = Format::bytes(sums.memory, locale)},
                    {.label = "CPU", .value = Format::decimal(sums.cpu, 1, 1, locale) + " %"},
                    {.label = "Processes", .value = Format::decimal(processes, 0, 0, locale)}}};
    for (const auto& line : lines) {
        inspector.lines.push_back({.label = line.title, .value = Format::bytes(line.memory, locale)});
    }
    return inspector;
}

}  // namespace tolvane
