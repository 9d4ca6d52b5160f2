#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/rows/TableRow.h"
#include "core/rules/Rule.h"

namespace tolvane {

/// What can be done to lines of the processes table.
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

/// One entry of a menu; one without an action is a divider.
struct ProcessMenuItem {
    std::string title;
    std::optional<ProcessAction> action;
    /// False where nothing of the line may be acted on.
    bool enabled = true;

    bool isDivider() const { return !action; }
    bool operator==(const ProcessMenuItem&) const = default;
};

/// Who acts: a user's program, which leaves other users and itself alone.
struct Actor {
    Pid pid = 0;
    std::uint32_t uid = 0;

    bool mayActOn(const ProcRow& row) const { return row.sample.mayBeTouchedBy(pid, uid); }
    /// On at least one process of the line.
    bool mayActOn(const TableRow& tableRow, const std::vector<ProcRow>& rows) const;
};

/// The menu of one line, and what its actions need. It carries out nothing itself.
struct ProcessActions {
    std::vector<ProcessMenuItem> items;
    /// All processes of the line.
    std::vector<Pid> pids;
    /// Of the line's application; none for what is no application.
    std::optional<std::string> appID;
    /// What `addRule` adds: switched off, and in log-only mode.
    std::optional<Rule> rule;
    /// What `copyCommand` copies.
    std::string command;
    /// What `showWorkingFolder` shows.
    std::optional<std::string> workingFolder;

    bool operator==(const ProcessActions&) const = default;

    static ProcessActions of(const TableRow& tableRow, const std::vector<ProcRow>& rows);
    /// The context menu of the table: the actions of a single line, and for one or several lines the way to force quit.
    static std::vector<ProcessMenuItem> menuOf(const std::vector<TableRow>& clicked, const std::vector<ProcRow>& rows,
                                               const Actor& actor);

    /// "Force Quit 3 Items…"
    static std::string forceQuitItems(std::size_t count);
    /// Restart the application when it grows past what it uses now.
    static Rule growthRule(const TableRow& tableRow, std::string_view appID);
    /// Stop processes of this kind when they are idle.
    static Rule idleRule(const ProcSample& sample);
};

}  // namespace tolvane
