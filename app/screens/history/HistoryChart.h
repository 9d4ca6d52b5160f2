#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/Date.h"
#include "core/history/Moment.h"
#include "core/sampling/SystemMemory.h"

namespace tolvane {

/// Moments of a day by pointer, because each holds dozens of texts.
using MomentList = std::vector<const Moment*>;

/// A stretch of time in which memory was tight.
struct PressureBand {
    Date start;
    Date end;
    Pressure pressure = Pressure::warning;

    bool operator==(const PressureBand&) const = default;
};

/// One band per pair of neighbours whose earlier moment was under pressure, at that moment's level. A normal moment and
/// the last one start no band.
std::vector<PressureBand> pressureBands(const MomentList& moments);

enum class HistorySeriesKind { used, compressed, swap, efficiency, performance, cpu };

/// One line of a chart with a value for each of the chart's dates; NaN where it has none.
struct HistorySeries {
    HistorySeriesKind kind = HistorySeriesKind::used;
    std::string name;
    std::vector<double> values;

    bool operator==(const HistorySeries& other) const;
};

struct HistoryTick {
    double value = 0;
    std::string label;

    bool operator==(const HistoryTick&) const = default;
};

/// What a chart over time shows. Values are in the unit of its axis.
struct HistoryChart {
    std::string title;
    /// Shown below the title; may be empty.
    std::string note;
    /// The text for screen readers.
    std::string spoken;
    std::string xLabel = "Time";
    std::string yLabel;
    /// What distinguishes the series; empty when they are parts of one value.
    std::string seriesLabel;
    /// Height of the plot in pixels.
    int height = 0;
    Date from;
    Date to;
    std::vector<Date> dates;
    std::vector<HistorySeries> series;
    std::vector<PressureBand> bands;
    /// Ascending from zero.
    std::vector<HistoryTick> ticks;
    /// The upper end of the axis.
    double top = 1;
    /// Where the vertical rule stands.
    Date focus;

    bool operator==(const HistoryChart&) const = default;
};

/// A stretch of time and the moment in focus.
struct HistoryDomain {
    Date from;
    Date to;
    Date focus;
};

/// Memory used, compressed and swap, in GB.
struct MemoryHistoryChart {
    static HistoryChart of(const MomentList& moments, const HistoryDomain& domain, std::string_view locale);
};

/// Load in cores: performance stacked on efficiency cores, or one area for moments that do not distinguish them.
struct CPUHistoryChart {
    static HistoryChart of(const MomentList& moments, const HistoryDomain& domain, std::string_view locale);
};

}  // namespace tolvane
