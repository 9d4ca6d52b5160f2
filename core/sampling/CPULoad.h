#pragma once

#include <vector>

#include "platform/MachineStatistics.h"

namespace tolvane {

/// Number of logical cores by class.
struct CoreLayout {
    int performance = 0;
    int efficiency = 0;

    bool operator==(const CoreLayout&) const = default;

    /// Read once per run: cores do not change class.
    static CoreLayout read(const MachineStatistics& machine);
};

/// How busy the cores were between two readings.
struct CPULoad {
    /// Fractions of all core time, 0 to 1.
    double user = 0;
    double system = 0;
    int cores = 1;
    /// Busy fractions summed over the cores of a class: 2.5 is two and a half cores' worth.
    double performance = 0;
    double efficiency = 0;
    int efficiencyCores = 0;

    bool operator==(const CPULoad&) const = default;

    /// Takes one entry per core, efficiency cores first. Counters may have wrapped at 32 bits in between.
    static CPULoad between(const std::vector<CPUTicks>& from, const std::vector<CPUTicks>& to,
                           const CoreLayout& layout);
    /// Takes totals of the machine; the fields by class stay at 0.
    static CPULoad between(const CPUTicks& from, const CPUTicks& to, int cores);
};

}  // namespace tolvane
