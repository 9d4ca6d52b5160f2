#pragma once

#include <string>

namespace tolvane::Decimal {

/// The fewest digits that read back as the same double: "60", "0.1", "1e-05". Values from 2^54 on
/// and below 0.0001 get an exponent. `value` is finite.
std::string shortest(double value);

/// The same, but always with a fraction: "60.0".
std::string shortestWithFraction(double value);

}  // namespace tolvane::Decimal
