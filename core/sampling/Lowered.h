#pragma once

#include "base/Date.h"

namespace tolvane {

/// A process whose priority this program lowered, on loan.
struct Lowered {
    /// Start time of the process, which tells it from a later one with its pid.
    Date start;
    /// When it was lowered.
    Date at;

    bool operator==(const Lowered&) const = default;
};

}  // namespace tolvane
