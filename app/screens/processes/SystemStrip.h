#pragma once

#include <string>
#include <string_view>

#include "app/model/AppModel.h"
#include "app/screens/CPUSummary.h"
#include "app/screens/MemorySummary.h"

namespace tolvane {

/// The values of the whole machine below the processes table.
struct SystemStrip {
    MemorySummary memory;
    CPUSummary cpu;
    /// Opens the history screen.
    std::string showHistory;
    std::string showHistoryTooltip;

    bool operator==(const SystemStrip&) const = default;

    static SystemStrip of(const AppModel& model, std::string_view locale);
    /// The same from plain values. `swapGrowth` and `readBack` are bytes over the last quarter of an hour.
    static SystemStrip of(const Snapshot& snapshot, const std::vector<LoadPoint>& loadHistory,
                          std::optional<std::int64_t> swapGrowth, std::optional<std::uint64_t> readBack,
                          std::string_view locale);
};

}  // namespace tolvane
