#include "app/rows/Format.h"

#include <algorithm>

#include "core/words/Words.h"

namespace tolvane::Format {

namespace {

/// The larger unit, then the smaller one; leaves out a part that is zero.
std::string twoUnits(std::int64_t amount, std::int64_t perLarge, const char* large, const char* small) {
    const auto whole = amount / perLarge;
    const auto rest = amount % perLarge;
    auto text = whole > 0 ? std::to_string(whole) + large : std::string();
    if (rest > 0) text.append(text.empty() ? "" : " ").append(std::to_string(rest)).append(small);
    return text;
}

}  // namespace

std::string bytes(std::uint64_t value, std::string_view locale) {
    return Words::bytes(value, Words::ByteStyle::figure, locale);
}

std::string duration(Date since, Date now) {
    constexpr double most = 1e15;
    const double passed = (now - since).count();
    if (!(passed >= 60)) return "<1m";
    const auto seconds = static_cast<std::int64_t>(std::min(passed, most));
    return seconds >= 86400 ? twoUnits(seconds / 3600, 24, "d", "h") : twoUnits(seconds / 60, 60, "h", "m");
}

std::string decimal(double value, int leastFractionDigits, int mostFractionDigits, std::string_view locale) {
    return Words::decimal(value, leastFractionDigits, mostFractionDigits, locale);
}

std::string list(const std::vector<std::string>& texts, std::string_view locale) { return Words::list(texts, locale); }

}  // namespace tolvane::Format
