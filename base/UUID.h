#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tolvane {

/// A universally unique identifier. Prints as 36 characters in upper case.
struct UUID {
    std::array<std::uint8_t, 16> bytes{};

    static UUID random();
    /// Accepts digits in either case; nullopt for any other text.
    static std::optional<UUID> parse(std::string_view text);
    std::string text() const;

    auto operator<=>(const UUID&) const = default;
};

}  // namespace tolvane
