#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The few ways in which the program reads and writes its files. All calls block on the disk, none throws, and none
/// waits for anything but the disk: what is no regular file is never opened for long. Paths are absolute.
namespace tolvane::Files {

/// All bytes of a regular file, a link to one included; none when they cannot be read.
std::optional<std::string> read(const std::string& path);

}  // namespace tolvane::Files
