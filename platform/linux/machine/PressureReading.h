#pragma once

#include <optional>
#include <string_view>

#include "platform/linux/machine/MemoryReadings.h"

namespace tolvane::linuxhost {

/// Percent of time that tasks stood still for want of memory, averaged over the last 10 and 60 seconds: `some` of them,
/// or all that could have run at once (`full`).
struct PressureAverages {
    double some10 = 0;
    double some60 = 0;
    double full10 = 0;
    double full60 = 0;

    bool operator==(const PressureAverages&) const = default;
};

/// The lines "some avg10=12.57 avg60=3.00 avg300=0.66 total=1983244" and "full …" of /proc/pressure/memory. None
/// without the first.
std::optional<PressureAverages> parsePressure(std::string_view text);

/// What the levels stand on. One figure alone misleads: a single group that meets its own limit raises the machine's
/// stall while gigabytes are free, and a machine full of warm memory that nobody misses has little available and no
/// stall. So a level needs both, tasks that stand still and little memory left.
namespace PressureThresholds {

/// A warning from half a second of stall in ten on, seen for long enough that the minute shows it too: a program that
/// starts, or a compressed page now and then, stays below.
inline constexpr double warningSome10 = 5;
inline constexpr double warningSome60 = 1;
/// And while the minute as a whole is that bad, a short breath does not end it.
inline constexpr double lastingSome60 = 5;
/// A quarter of memory that could still be had is no want; machines that thrash come below a tenth.
inline constexpr double warningAvailableShare = 0.25;

/// Critical when nothing at all could run for a second in ten. Killers of user space begin at 10 of `full` too.
inline constexpr double criticalFull10 = 10;
inline constexpr double criticalFull60 = 2;
inline constexpr double criticalAvailableShare = 0.1;

}  // namespace PressureThresholds

/// 1 normal, 2 warning, 4 critical.
int pressureLevel(const PressureAverages& averages, const MemInfo& memory);

}  // namespace tolvane::linuxhost
