#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace tolvane::linuxhost {

/// Cuts the first line off, without its end.
inline std::string_view takeLine(std::string_view& text) {
    const auto end = text.find('\n');
    const auto line = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    return line;
}

/// Cuts the first word off, with the blanks before it; empty at the end.
inline std::string_view takeWord(std::string_view& line) {
    const auto start = line.find_first_not_of(" \t");
    line = start == std::string_view::npos ? std::string_view() : line.substr(start);
    const auto end = line.find_first_of(" \t");
    const auto word = line.substr(0, end);
    line = end == std::string_view::npos ? std::string_view() : line.substr(end);
    return word;
}

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
