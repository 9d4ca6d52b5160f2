#pragma once

#include <string>

namespace tolvane::Decimal {

/// The fewest digits that read back as the same double: "60", "0.1", "1e-05". Exponents stand from 2 to the 54th on and
/// below 0.0001. `value` is finite.
std::string shortest(double value);

/// The same with a fraction at least: "60.0".
std::string shortestWithFraction(double value);

}  // namespace tolvane::Decimal
