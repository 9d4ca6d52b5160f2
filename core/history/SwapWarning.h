#pragma once

#include <cstdint>
#include <vector>

#include "core/history/Grower.h"

namespace tolvane {

/// Swap is growing, or memory is being read back from it, fast enough to tell the user.
struct SwapWarning {
    /// Bytes over the last quarter of an hour.
    std::uint64_t growth = 0;
    /// The largest first.
    std::vector<Grower> growers;
    /// `growth` counts memory read back; else swap that grew.
    bool readBack = false;

    bool operator==(const SwapWarning&) const = default;
};

}  // namespace tolvane
