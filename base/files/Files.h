#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/Result.h"
#include "base/files/FileDescriptor.h"
#include "base/files/FileError.h"

/// The few ways in which the program reads and writes its files. All calls block on the disk, none throws, and none
/// waits for anything but the disk. Paths are absolute.
namespace tolvane::Files {

/// All bytes of a regular file, also through a link; nullopt when they cannot be read or are more than 64 MB.
std::optional<std::string> read(const std::string& path);

/// The same, or why not; a file of more than `limit` bytes is not read at all.
Result<std::string, FileError> readUpTo(const std::string& path, std::size_t limit);

/// The same as text; nullopt when the bytes are not valid UTF-8, or more than 1 GB.
std::optional<std::string> readText(const std::string& path);

/// The first bytes of a regular file, `size` of them unless it ends before; nullopt when they cannot be read.
std::optional<std::string> readStart(const std::string& path, std::size_t size);

/// All bytes of a file of the kernel, which states no size; nullopt when they cannot be read or are more than `limit`.
std::optional<std::string> readKernelFile(const std::string& path, std::size_t limit);

/// A regular file opened for reading; empty for a pipe or a device, without waiting for it.
FileDescriptor openForReading(const std::string& path);

/// Adds one whole line, its line feed included, in one write; makes the file when it is missing. A line that does not
/// fit on the disk is taken back, so that no torn one stays. A link in place of the file is not followed.
/// False when nothing was added.
bool append(const std::string& path, std::string_view line);

/// A link to a folder counts.
bool isFolder(const std::string& path);

/// Makes what is missing of the path, with the rights that the user's folders have. Returns why it could not.
std::optional<FileError> makeFolder(const std::string& path);

/// The same for the owner alone. What is there keeps its rights.
std::optional<FileError> makePrivateFolder(const std::string& path);

/// Takes everybody else's rights to a folder away.
void keepToOwner(const std::string& folder);

/// Whether anything stands there, a link that leads nowhere included.
bool exists(const std::string& path);

void remove(const std::string& path);

}  // namespace tolvane::Files
