#pragma once

#include <chrono>

namespace tolvane {

using Seconds = std::chrono::duration<double>;

/// Dates count from 2001-01-01 00:00:00 UTC, so a file holds the same number as memory.
struct ReferenceEpoch {};

/// A point in time in double seconds since the reference epoch.
using Date = std::chrono::time_point<ReferenceEpoch, Seconds>;

/// 2001-01-01 as seconds since 1970-01-01, both UTC.
inline constexpr double referenceEpochInUnixSeconds = 978307200.0;

/// The first day of year 1, earlier than any event.
inline constexpr Date distantPast{Seconds{-63114076800.0}};
/// The first day of year 4001, later than any date that is compared with it.
inline constexpr Date distantFuture{Seconds{63113904000.0}};

constexpr Date dateFromUnixSeconds(double seconds) { return Date{Seconds{seconds - referenceEpochInUnixSeconds}}; }
constexpr double unixSeconds(Date date) { return date.time_since_epoch().count() + referenceEpochInUnixSeconds; }

}  // namespace tolvane
