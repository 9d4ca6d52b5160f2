#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/rows/TableRow.h"
#include "app/sampling/HistoryPoint.h"
#include "app/sampling/Snapshot.h"
#include "app/screens/MemorySummary.h"
#include "app/screens/processes/ProcessActions.h"
#include "core/sampling/Priority.h"

namespace tolvane {

/// One line of a chart, a value for each of the chart's dates.
struct InspectorSeries {
    std::string name;
    std::vector<double> values;

    bool operator==(const InspectorSeries&) const = default;
};

/// A value of one row over time.
struct InspectorChart {
    std::string title;
    std::string xLabel;
    std::string yLabel;
    /// Unit of the values: "MB" or "%".
    std::string unit;
    /// What distinguishes the series.
    std::string seriesLabel;
    std::vector<Date> dates;
    std::vector<InspectorSeries> series;
    std::string accessibleText;

    bool operator==(const InspectorChart&) const = default;
};

struct InspectorButton {
    std::string title;
    ProcessAction action = ProcessAction::terminate;
    std::string tooltip;
    /// Letter of the shortcut, if there is one.
    std::optional<char> shortcut;
    /// False when no process of the row may be acted on: they belong to another user, or are this program.
    bool enabled = true;

    bool operator==(const InspectorButton&) const = default;
};

/// What the inspector reads besides the row.
struct InspectorFacts {
    const Snapshot& snapshot;
    /// Summed readings of the row's processes, oldest first.
    const std::vector<HistoryPoint>& history;
    const std::map<Pid, Lowered>& lowered;
    /// Ports that the process listens on.
    const std::vector<int>& ports;
    /// The user's home folder, shown as a tilde.
    std::string_view home;
    Actor actor;
    /// ICU identifiers; the empty zone is the machine's own.
    std::string_view locale;
    std::string_view zone = {};
};

/// Everything that the inspector shows about one row.
struct InspectorContent {
    std::string title;
    std::optional<std::string> detail;
    std::optional<std::string> appPath;
    std::vector<ValueRow> figures;
    std::optional<InspectorChart> memoryChart;
    std::optional<InspectorChart> cpuChart;
    std::string processHeading;
    /// Empty for a group.
    std::vector<ValueRow> process;
    std::vector<InspectorButton> buttons;

    bool operator==(const InspectorContent&) const = default;

    static InspectorContent of(const TableRow& tableRow, const InspectorFacts& facts);
};

}  // namespace tolvane
