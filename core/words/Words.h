#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Date.h"

/// Formats numbers, sizes, durations and lists as text. `locale` is an ICU identifier such as "en_US"; one that is not
/// installed falls back to the nearest that ICU has. Size units are always English, while their numbers follow the
/// locale. Callable from any thread: each thread keeps the formatters it has used, per locale, until it ends.
namespace tolvane::Words {

/// Whether a byte count stands in a table or panel, or within a sentence.
enum class ByteStyle {
    /// "Zero KB", and GB from 1,000 MB on, so that no number is wider than its neighbours.
    figure,
    /// "Zero kB", and MB up to 1 GB.
    sentence,
};

/// 1,024-based: "1 byte", "1,023 bytes", "12 KB", "1.5 MB", "2.25 GB". Chooses the unit before rounding, rounds half to
/// even, and drops trailing zeros.
std::string bytes(std::uint64_t value, ByteStyle style, std::string_view locale);

/// Uses as many fraction digits as needed between the two bounds; rounds half to even on the shortest decimal that
/// reads back as `value`.
std::string decimal(double value, int leastFractionDigits, int mostFractionDigits, std::string_view locale);

/// "25%" for 0.25, without fraction digits.
std::string percent(double fraction, std::string_view locale);

/// "A, B, and C" as the locale joins them.
std::string list(const std::vector<std::string>& texts, std::string_view locale);

enum class UnitWidth {
    /// "1 hr, 30 min"
    abbreviated,
    /// "1 hour, 30 minutes"
    wide,
};

/// Days, hours and minutes without those that are zero, rounded to the minute, half to even. A negative span counts as
/// zero: "0 min".
std::string duration(Seconds span, UnitWidth width, std::string_view locale);

/// "1 core", "0.5 performance cores": percent of one core as a number of cores, with at most one fraction digit.
std::string cores(double percent, std::optional<std::string_view> kind, std::string_view locale);

}  // namespace tolvane::Words
