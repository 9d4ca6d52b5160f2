#include "app/screens/processes/ProcessActions.h"

#include <algorithm>

#include "app/screens/processes/RowProcesses.h"

namespace tolvane {

namespace {

std::optional<std::string> appIDOf(const TableRow& tableRow, const std::vector<ProcRow>& rows) {
    for (const auto* row : RowProcesses::all(tableRow, rows)) {
        if (row->appID) return row->appID->str();
    }
    return std::nullopt;
}

void addApplicationItems(ProcessActions& actions, const TableRow& tableRow) {
    actions.rule = ProcessActions::growthRule(tableRow, *actions.appID);
    actions.items = {{"Quit " + tableRow.title, ProcessAction::quit},
                     {"Relaunch " + tableRow.title, ProcessAction::relaunch},
                     {},
                     {"Add Rule for " + tableRow.title, ProcessAction::addRule}};
}

std::string terminateTitle(std::size_t count) {
    return count == 1 ? "Terminate" : "Terminate " + std::to_string(count) + " Processes";
}

void addProcessItems(ProcessActions& actions, const ProcSample& sample) {
    actions.command = sample.commandLine();
    actions.rule = ProcessActions::idleRule(sample);
    actions.items.push_back({});
    actions.items.push_back({"Copy Command", ProcessAction::copyCommand});
    if (sample.cwd) {
        actions.workingFolder = sample.cwd->str();
        actions.items.push_back({"Show Working Folder in Finder", ProcessAction::showWorkingFolder});
    }
    actions.items.push_back({});
    actions.items.push_back({"Add Rule for " + sample.name.str(), ProcessAction::addRule});
}

bool actsOnProcesses(ProcessAction action) {
    return action != ProcessAction::addRule && action != ProcessAction::copyCommand &&
           action != ProcessAction::showWorkingFolder;
}

}  // namespace

bool Actor::mayActOn(const TableRow& tableRow, const std::vector<ProcRow>& rows) const {
    return std::ranges::any_of(RowProcesses::all(tableRow, rows),
                               [this](const ProcRow* row) { return mayActOn(*row); });
}

ProcessActions ProcessActions::of(const TableRow& tableRow, const std::vector<ProcRow>& rows) {
    ProcessActions actions;
    actions.pids = tableRow.pids;
    actions.appID = appIDOf(tableRow, rows);
    if (actions.appID) {
        addApplicationItems(actions, tableRow);
        return actions;
    }
    actions.items.push_back({terminateTitle(tableRow.pids.size()), ProcessAction::terminate});
    if (const auto* row = RowProcesses::own(tableRow, rows)) addProcessItems(actions, row->sample);
    return actions;
}

std::vector<ProcessMenuItem> ProcessActions::menuOf(const std::vector<TableRow>& clicked,
                                                    const std::vector<ProcRow>& rows, const Actor& actor) {
    if (clicked.empty()) return {};
    const bool enabled =
        std::ranges::any_of(clicked, [&](const TableRow& tableRow) { return actor.mayActOn(tableRow, rows); });
    if (clicked.size() > 1) return {{forceQuitItems(clicked.size()), ProcessAction::forceQuit, enabled}};
    auto items = of(clicked.front(), rows).items;
    items.push_back({});
    items.push_back({"Force Quit…", ProcessAction::forceQuit});
    for (auto& item : items) item.enabled = enabled || !item.action || !actsOnProcesses(*item.action);
    return items;
}

std::string ProcessActions::forceQuitItems(std::size_t count) {
    return "Force Quit " + std::to_string(count) + " Items…";
}

Rule ProcessActions::growthRule(const TableRow& tableRow, std::string_view appID) {
    constexpr std::uint64_t bytesPerMB = 1024 * 1024;
    constexpr std::uint64_t step = 100;
    constexpr std::uint64_t least = 500;
    const auto limit = std::max(tableRow.memory / bytesPerMB / step * step, least);
    return {.id = UUID::random(),
            .name = "Restart " + tableRow.title + " when it grows",
            .enabled = false,
            .dryRun = true,
            .target = AppTarget{.appID = std::string(appID), .name = tableRow.title},
            .unusedMinutes = 60,
            .memoryMB = static_cast<std::int64_t>(limit),
            .action = RuleAction::relaunch};
}

Rule ProcessActions::idleRule(const ProcSample& sample) {
    return {.id = UUID::random(),
            .name = "Stop idle " + sample.name.str(),
            .enabled = false,
            .dryRun = true,
            .target = CommandTarget{.patterns = {std::string(sample.ruleMatch())}},
            .unusedMinutes = 120,
            .action = RuleAction::terminate};
}

}  // namespace tolvane
