#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/rules/Rule.h"

/// Conditions of a rule, as the pickers offer them.
namespace tolvane::RuleConditions {

inline constexpr std::string_view dontCheck = "Don't check";
inline constexpr std::array<std::int64_t, 7> unusedMinutes = {15, 30, 60, 120, 240, 480, 1440};
inline constexpr std::array<std::int64_t, 6> memoryMB = {512, 1024, 1536, 2048, 4096, 8192};

/// One entry of a picker; nullopt for "Don't check".
struct Choice {
    std::optional<std::int64_t> value;
    std::string title;

    bool operator==(const Choice&) const = default;
};

/// Ascending and unique; includes the present value even if it is not a standard one.
std::vector<std::int64_t> choices(std::span<const std::int64_t> stock, std::optional<std::int64_t> current);

/// "Don't check", then the choices with their labels.
std::vector<Choice> unusedChoices(std::optional<std::int64_t> current, std::string_view locale);
std::vector<Choice> memoryChoices(std::optional<std::int64_t> current, std::string_view locale);

}  // namespace tolvane::RuleConditions
