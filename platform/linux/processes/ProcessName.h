#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace tolvane::linuxhost {

/// The kernel keeps 15 bytes of a process's name.
inline constexpr std::size_t commLimit = 15;

/// Whether `processName` needs the arguments to give the whole name.
bool isCutShort(std::string_view comm, std::string_view executable);

/// The name that a person knows the process by: `comm`, whole again where the kernel cut it, from the executable or
/// the first arguments; the executable's where `comm` says nothing of the program, as Node's "node-MainThread".
/// `executable` is a path and may be empty.
std::string_view processName(std::string_view comm, std::string_view executable,
                             std::span<const std::string_view> arguments);

}  // namespace tolvane::linuxhost
