#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/rows/TableRow.h"
#include "core/rules/Rule.h"

namespace tolvane {

/// What can be done to rows of the processes table.
enum class ProcessAction {
    quit,
    relaunch,
    addRule,
    terminate,
    copyCommand,
    showWorkingFolder,
    lowerPriority,
    restorePriority,
    forceQuit,
};

/// One entry of a menu; an entry without an action is a divider.
struct ProcessMenuItem {
    std::string title;
    std::optional<ProcessAction> action;
    /// False when no process of the row may be acted on.
    bool enabled = true;

    bool isDivider() const { return !action; }
    bool operator==(const ProcessMenuItem&) const = default;
};

/// The acting program and its user. It leaves other users' processes and itself alone.
struct Actor {
    Pid pid = 0;
    std::uint32_t uid = 0;

    bool mayActOn(const ProcRow& row) const { return row.sample.mayBeTouchedBy(pid, uid); }
    /// True when it may act on at least one process of the row.
    bool mayActOn(const TableRow& tableRow, const std::vector<ProcRow>& rows) const;
};

/// The menu of one row, and the data that its actions need. It does not act itself.
struct ProcessActions {
    std::vector<ProcessMenuItem> items;
    /// All processes of the row.
    std::vector<Pid> pids;
    /// Identifier of the row's application; nullopt for other rows.
    std::optional<std::string> appID;
    /// What `addRule` adds: switched off, and in log-only mode.
    std::optional<Rule> rule;
    /// What `copyCommand` copies.
    std::string command;
    /// What `showWorkingFolder` shows.
    std::optional<std::string> workingFolder;

    bool operator==(const ProcessActions&) const = default;

    static ProcessActions of(const TableRow& tableRow, const std::vector<ProcRow>& rows);
    /// The context menu of the table: the actions of a single row, and force quit for one or several rows.
    static std::vector<ProcessMenuItem> menuOf(const std::vector<TableRow>& clicked, const std::vector<ProcRow>& rows,
                                               const Actor& actor);

    /// "Force Quit 3 Items…"
    static std::string forceQuitItems(std::size_t count);
    /// Restarts the application when it grows beyond its present size.
    static Rule growthRule(const TableRow& tableRow, std::string_view appID);
    /// Stops processes of this kind when they are idle.
    static Rule idleRule(const ProcSample& sample);
};

}  // namespace tolvane
