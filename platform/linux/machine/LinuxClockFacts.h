#pragma once

#include <cstdint>

#include "base/Date.h"

namespace tolvane::linuxhost {

/// Converts the kernel's ticks into dates and spans. Read once per run and shared, so that a process never shows two
/// start times even when the wall clock is set meanwhile.
struct LinuxClockFacts {
    /// When the machine started, in seconds since 1970.
    double bootUnixSeconds = 0;
    double ticksPerSecond = 100;

    bool operator==(const LinuxClockFacts&) const = default;

    static LinuxClockFacts read();

    Date dateOfTicks(std::uint64_t ticksAfterBoot) const {
        return dateFromUnixSeconds(bootUnixSeconds + static_cast<double>(ticksAfterBoot) / ticksPerSecond);
    }
    double nanosPerTick() const { return 1e9 / ticksPerSecond; }
};

/// Time since boot, sleep included.
Seconds uptime();

}  // namespace tolvane::linuxhost
