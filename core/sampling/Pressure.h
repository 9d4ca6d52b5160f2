#pragma once

#include <compare>
#include <optional>

namespace tolvane {

/// How tight memory is, with the kernel's own numbers; ordered by them.
enum class Pressure : int { normal = 1, warning = 2, critical = 4 };

/// None for a number that is no level.
constexpr std::optional<Pressure> pressureFromLevel(int level) {
    switch (level) {
        case 1:
            return Pressure::normal;
        case 2:
            return Pressure::warning;
        case 4:
            return Pressure::critical;
        default:
            return std::nullopt;
    }
}

}  // namespace tolvane
