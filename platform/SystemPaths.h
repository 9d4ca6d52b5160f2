#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace tolvane {

/// The folders that hold the system's programs.
inline constexpr std::array<std::string_view, 5> systemPathPrefixes = {"/System/", "/usr/", "/bin/", "/sbin/",
                                                                       "/Library/Apple/"};

/// Compares text only, case-sensitively; an empty path does not belong to the system.
constexpr bool isSystemPath(std::string_view path) {
    return std::ranges::any_of(systemPathPrefixes, [&](std::string_view prefix) { return path.starts_with(prefix); });
}

}  // namespace tolvane
