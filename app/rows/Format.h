#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/Date.h"

/// The shared words for sizes, times and figures. `locale` is an ICU identifier such as "en_US"; one that is not
/// installed falls back to what ICU has nearest.
namespace tolvane::Format {

/// "512 MB", "1.5 GB", "Zero KB", "1 byte"; 1,024-based, thousands grouped in the locale.
std::string bytes(std::uint64_t value, std::string_view locale);

/// "<1m", "5m", "1h 5m", "3d 4h": whole units, smaller parts cut. A `since` after `now` counts as now.
std::string duration(Date since, Date now);

/// A figure with at most, or exactly, that many fraction digits.
std::string decimal(double value, int leastFractionDigits, int mostFractionDigits, std::string_view locale);

/// "A, B and C" as the locale joins them.
std::string list(const std::vector<std::string>& texts, std::string_view locale);

}  // namespace tolvane::Format
