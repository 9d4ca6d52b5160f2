#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace tolvane {

/// Where programs of the system stand.
inline constexpr std::array<std::string_view, 5> systemPathPrefixes = {"/System/", "/usr/", "/bin/", "/sbin/",
                                                                       "/Library/Apple/"};

/// The text alone decides, in its own case; the empty path is not the system's.
constexpr bool isSystemPath(std::string_view path) {
    return std::ranges::any_of(systemPathPrefixes, [&](std::string_view prefix) { return path.starts_with(prefix); });
}

}  // namespace tolvane
