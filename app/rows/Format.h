#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/Date.h"

/// Shared texts for sizes, times and numbers. `locale` is an ICU identifier such as "en_US"; ICU falls back to the
/// nearest installed one.
namespace tolvane::Format {

/// "512 MB", "1.5 GB", "Zero KB", "1 byte"; units of 1,024, thousands grouped as in the locale.
std::string bytes(std::uint64_t value, std::string_view locale);

/// "<1m", "5m", "1h 5m", "3d 4h": whole units, truncated. A `since` after `now` counts as now.
std::string duration(Date since, Date now);

/// A number with at least and at most so many fraction digits.
std::string decimal(double value, int leastFractionDigits, int mostFractionDigits, std::string_view locale);

/// "A, B and C" as the locale joins them.
std::string list(const std::vector<std::string>& texts, std::string_view locale);

}  // namespace tolvane::Format
