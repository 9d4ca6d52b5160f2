#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/rows/TableRow.h"
#include "app/sampling/HistoryPoint.h"
#include "app/screens/MemorySummary.h"
#include "core/sampling/CPULoad.h"

namespace tolvane {

/// The CPU block of the strip and of the panel.
struct CPUSummary {
    std::string headline;
    /// "3.9 of 12 cores busy now"
    std::string busyNow;
    /// Oldest first, since the clock was last set back; empty while there are too few to draw.
    std::vector<LoadPoint> chart;
    /// What the chart shows, for its tooltip and for screen readers.
    std::string chartText;
    /// "Time, Cores; Efficiency 0.4, Performance 2.6", for screen readers; empty without a chart.
    std::string chartDetail;
    std::string chartCaption;
    std::vector<ValueRow> rows;

    bool operator==(const CPUSummary&) const = default;

    static CPUSummary of(const CPULoad& cpu, const std::vector<LoadPoint>& loadHistory,
                         const std::optional<TableRow>& busiest, std::string_view locale);
    /// "3.9 of 12 cores"
    static std::string load(const CPULoad& cpu, std::string_view locale);
    /// The same for some of the cores.
    static std::string part(double share, int count, std::string_view locale);
};

}  // namespace tolvane
