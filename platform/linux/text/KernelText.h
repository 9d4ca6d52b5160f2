#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace tolvane::linuxhost {

/// The whole text as one number; nullopt for anything else.
template <typename Number>
std::optional<Number> wholeNumber(std::string_view text) {
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

/// The only line of a file, with or without its line end.
inline std::string_view withoutLineEnd(std::string_view text) { return text.substr(0, text.find('\n')); }

}  // namespace tolvane::linuxhost
