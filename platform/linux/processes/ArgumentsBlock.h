#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tolvane::linuxhost {

/// The bytes that `procStrings` reads: a 32-bit little-endian count, the executable, the arguments and the
/// environment, each ended by a NUL. The layout has no room for an empty first argument, so those are left out.
/// `environment` is as in /proc/PID/environ; its empty entries are left out, for one ends the list.
std::string argumentsBlock(std::string_view executable, const std::vector<std::string_view>& arguments,
                           std::string_view environment);

}  // namespace tolvane::linuxhost
