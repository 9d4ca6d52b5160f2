#pragma once

#include <string>
#include <string_view>

#include "app/AppModel.h"
#include "app/screens/CPUSummary.h"
#include "app/screens/MemorySummary.h"

namespace tolvane {

/// The figures of the machine below the processes table.
struct SystemStrip {
    MemorySummary memory;
    CPUSummary cpu;
    std::string showHistory;
    std::string showHistoryTooltip;

    bool operator==(const SystemStrip&) const = default;

    static SystemStrip of(const AppModel& model, std::string_view locale);
};

}  // namespace tolvane
