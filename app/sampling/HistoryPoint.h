#pragma once

#include <cstdint>

#include "base/Date.h"

namespace tolvane {

/// One process at one tick.
struct HistoryPoint {
    Date date;
    /// Bytes.
    std::uint64_t footprint = 0;
    std::uint64_t compressed = 0;
    /// Percent of one core.
    double cpu = 0;

    bool operator==(const HistoryPoint&) const = default;
};

/// The load of the machine at one tick, in cores.
struct LoadPoint {
    Date date;
    double performance = 0;
    double efficiency = 0;

    bool operator==(const LoadPoint&) const = default;
};

}  // namespace tolvane
