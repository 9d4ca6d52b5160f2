#pragma once

#include <cstdint>

#include "core/history/Moment.h"

namespace tolvane {

/// What grew between two moments, as it stood at the later one.
struct Grower {
    Holder holder;
    /// Bytes.
    std::uint64_t amount = 0;

    bool operator==(const Grower&) const = default;
};

}  // namespace tolvane
