#pragma once

#include <optional>
#include <string_view>

#include "platform/linux/machine/MemoryReadings.h"

namespace tolvane::linuxhost {

/// Percent of time in which tasks stalled for lack of memory, averaged over the last 10 and 60 seconds: at least one
/// task (`some`), or all runnable tasks at once (`full`).
struct PressureAverages {
    double some10 = 0;
    double some60 = 0;
    double full10 = 0;
    double full60 = 0;

    bool operator==(const PressureAverages&) const = default;
};

/// The lines "some avg10=12.57 avg60=3.00 avg300=0.66 total=1983244" and "full …" of /proc/pressure/memory.
/// Nullopt without the first.
std::optional<PressureAverages> parsePressure(std::string_view text);

/// The limits behind the levels. One number alone misleads: a single control group at its own limit raises the
/// machine's stall while gigabytes are free, and a machine full of warm memory has little available and no stall. So a
/// level needs both: stalled tasks and little memory left.
namespace PressureThresholds {

/// A warning begins at half a second of stall in ten, for long enough that the minute shows it too. A starting program,
/// or a compressed page now and then, stays below.
inline constexpr double warningSome10 = 5;
inline constexpr double warningSome60 = 1;
/// While the whole minute is this bad, a short pause does not end the warning.
inline constexpr double lastingSome60 = 5;
/// With a quarter of memory available there is no shortage; thrashing machines fall below a tenth.
inline constexpr double warningAvailableShare = 0.25;

/// Critical when nothing could run for one second in ten. User-space out-of-memory killers start at 10 of `full` too.
inline constexpr double criticalFull10 = 10;
inline constexpr double criticalFull60 = 2;
inline constexpr double criticalAvailableShare = 0.1;

}  // namespace PressureThresholds

/// 1 normal, 2 warning, 4 critical.
int pressureLevel(const PressureAverages& averages, const MemInfo& memory);

}  // namespace tolvane::linuxhost
