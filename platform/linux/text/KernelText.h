#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace tolvane::linuxhost {

/// The whole text as one number; none for anything else.
template <typename Number>
std::optional<Number> wholeNumber(std::string_view text) {
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

/// A file's one line, with or without its end.
inline std::string_view withoutLineEnd(std::string_view text) { return text.substr(0, text.find('\n')); }

}  // namespace tolvane::linuxhost
