#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace tolvane::linuxhost {

/// The kernel keeps 15 bytes of a process's name.
inline constexpr std::size_t commLimit = 15;

/// Whether `processName` needs the arguments to find the whole name.
bool isCutShort(std::string_view comm, std::string_view executable);

/// The name that people know the process by: `comm`, completed from the executable or the first arguments where the
/// kernel cut it, or the executable's name where `comm` says nothing about the program, like Node's "node-MainThread".
/// `executable` is a path and may be empty.
std::string_view processName(std::string_view comm, std::string_view executable,
                             std::span<const std::string_view> arguments);

}  // namespace tolvane::linuxhost
