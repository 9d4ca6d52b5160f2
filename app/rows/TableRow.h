#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/sampling/ProcRow.h"

namespace tolvane {

/// How the rows of the processes table are folded.
enum class Grouping { apps, projects, all };

struct GroupingTraits {
    Grouping grouping;
    std::string_view rawValue;
    std::string_view label;
};

inline constexpr std::array<GroupingTraits, 3> groupings = {{
    {Grouping::apps, "apps", "By App"},
    {Grouping::projects, "projects", "By Project"},
    {Grouping::all, "all", "All Processes"},
}};

/// Fields that a table of processes can be sorted by.
enum class RowField { title, memory, inRAM, compressed, cpu, unusedSince, age };

/// One sort key: the field and its direction. Later keys break ties.
struct RowOrder {
    RowField field = RowField::memory;
    bool ascending = false;

    bool operator==(const RowOrder&) const = default;
};

/// Where row names come from, so that folding rows needs no screen.
struct RowNames {
    /// Display name of an application by its path.
    std::function<std::string(std::string_view appPath)> application;
    /// The user's home folder, to be shown as a tilde.
    std::string home;
};

/// One row of a table of processes: a process, or a group with sums over its children.
struct TableRow {
    std::string id;
    std::string title;
    std::optional<std::string> detail;
    std::optional<std::string> appPath;
    std::vector<Pid> pids;
    /// Bytes, as are the next three.
    std::uint64_t memory = 0;
    std::uint64_t inRAM = 0;
    std::uint64_t compressed = 0;
    std::uint64_t swapIns = 0;
    /// Percent of one core.
    double cpu = 0;
    Date unusedSince;
    std::optional<Date> started;
    /// nullopt on a process, set on a group.
    std::optional<std::vector<TableRow>> children;

    bool operator==(const TableRow&) const = default;

    /// For sorting by running time: rows without a start come last.
    Date age() const { return started.value_or(distantFuture); }

    /// A group: sums the values of the children; `unusedSince` is the latest, `started` the earliest.
    static TableRow group(std::string id, std::string title, std::optional<std::string> detail,
                          std::optional<std::string> appPath, std::vector<TableRow> children);
    /// Groups stand in the order in which `rows` first mentions them.
    static std::vector<TableRow> build(const std::vector<ProcRow>& rows, Grouping grouping, double ratio,
                                       const RowNames& names);
    static std::string processName(const ProcSample& sample);
    /// The text naming the owner of the process; nullopt when it has none.
    static std::optional<std::string> owner(const ProcRow& row, const RowNames& names);

    /// A copy with all levels of children in that order; stable.
    TableRow sorted(const std::vector<RowOrder>& order) const;
    static void sort(std::vector<TableRow>& rows, const std::vector<RowOrder>& order);
    /// This row or the first below it with the id, depth first; null when there is none.
    const TableRow* find(std::string_view id) const;
    /// The rows with those ids, largest memory first, ties by ascending id; skips unknown ids.
    static std::vector<TableRow> selected(const std::set<std::string>& ids, const std::vector<TableRow>& rows);
    static std::string forceQuitQuestion(const std::vector<TableRow>& rows, std::string_view locale);
};

}  // namespace tolvane
