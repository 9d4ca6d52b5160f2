#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/Result.h"
#include "base/files/FileError.h"

/// The few ways in which the program reads and writes its files. All calls block on the disk, none throws, and none
/// waits for anything but the disk: what is no regular file is never opened for long. Paths are absolute.
namespace tolvane::Files {

/// All bytes of a regular file, a link to one included; none when they cannot be read or are more than 64 MB.
std::optional<std::string> read(const std::string& path);

/// The same, or why not; a file of more than `limit` bytes is not opened for long.
Result<std::string, FileError> readUpTo(const std::string& path, std::size_t limit);

/// Adds one whole line, its line feed included, in one write; the file is made when it is missing. A line that does not
/// fit on the disk is taken back, so that no torn one stays. A link in place of the file is not followed.
/// False when nothing was added.
bool append(const std::string& path, std::string_view line);

/// Makes a folder that only its owner enters, with the folders above it; one that is there gets the same rights.
void makePrivateFolder(const std::string& path);

/// Whether anything stands there, a link that leads nowhere included.
bool exists(const std::string& path);

void remove(const std::string& path);

}  // namespace tolvane::Files
