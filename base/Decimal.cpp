#include "base/Decimal.h"

#include <array>
#include <charconv>
#include <cmath>

namespace tolvane::Decimal {

namespace {

constexpr double leastPlain = 1e-4;
/// Below this, neighbouring doubles are at most 2 apart.
constexpr double mostPlain = 0x1p54;

std::chars_format formatFor(double value) {
    const double size = std::fabs(value);
    const bool plain = size == 0 || (size >= leastPlain && size < mostPlain);
    return plain ? std::chars_format::fixed : std::chars_format::scientific;
}

}  // namespace

std::string shortest(double value) {
    // 17 digits, a point, a sign and either an exponent or leading zeros fit into 32 characters.
    std::array<char, 32> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, formatFor(value));
    return {buffer.data(), written.ptr};
}

std::string shortestWithFraction(double value) {
    auto text = shortest(value);
    if (text.find_first_of(".e") == std::string::npos) text += ".0";
    return text;
}

}  // namespace tolvane::Decimal
