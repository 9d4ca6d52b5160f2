#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

/// Small steps through the text of kernel files. Pure functions that do not allocate.
namespace tolvane::linuxhost::Scan {

constexpr std::string_view skipBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? std::string_view{} : text.substr(first);
}

/// The number at the start of the text, after any blanks; nullopt when there is none or it does not fit.
inline std::optional<std::uint64_t> figure(std::string_view text, int base = 10) {
    text = skipBlanks(text);
    std::uint64_t value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (result.ec != std::errc{}) return std::nullopt;
    return value;
}

/// Returns the text before `separator` and moves `rest` past it; returns the whole rest when there is no separator.
constexpr std::string_view take(std::string_view& rest, char separator) {
    const auto end = rest.find(separator);
    const auto taken = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view{} : rest.substr(end + 1);
    return taken;
}

/// The next word, without the blanks around it; empty at the end.
constexpr std::string_view word(std::string_view& rest) {
    rest = skipBlanks(rest);
    const auto end = rest.find_first_of(" \t");
    const auto taken = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view{} : rest.substr(end);
    return taken;
}

/// The last component of a path; ignores trailing slashes.
constexpr std::string_view lastComponent(std::string_view path) {
    while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
    const auto slash = path.rfind('/');
    return slash == std::string_view::npos || path.size() == 1 ? path : path.substr(slash + 1);
}

}  // namespace tolvane::linuxhost::Scan
