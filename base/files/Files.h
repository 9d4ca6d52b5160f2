#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/Result.h"
#include "base/files/FileDescriptor.h"
#include "base/files/FileError.h"

/// The few ways in which the program reads and writes files. Calls block on the disk and on nothing else, and never
/// throw. Paths are absolute.
namespace tolvane::Files {

/// All bytes of a regular file, also through a link; nullopt when it cannot be read or is larger than 64 MB.
std::optional<std::string> read(const std::string& path);

/// The same with the reason for a failure. Does not read a file of more than `limit` bytes at all.
Result<std::string, FileError> readUpTo(const std::string& path, std::size_t limit);

/// The same as text; nullopt when the bytes are not valid UTF-8 or take more than 1 GB.
std::optional<std::string> readText(const std::string& path);

/// The first `size` bytes of a regular file, or all of a shorter one; nullopt when it cannot be read.
std::optional<std::string> readStart(const std::string& path, std::size_t size);

/// All bytes of a kernel file, which states no size; nullopt when it cannot be read or holds more than `limit` bytes.
std::optional<std::string> readKernelFile(const std::string& path, std::size_t limit);

/// Opens a regular file for reading. Returns an empty one for a pipe or a device, without blocking on it.
FileDescriptor openForReading(const std::string& path);

/// Appends one whole line, including its line feed, in one write; creates a missing file. Takes a line back that does
/// not fit on the disk, so that no torn one stays. Does not follow a link in place of the file.
/// Returns false when nothing was appended.
bool append(const std::string& path, std::string_view line);

/// Also true for a link to a folder.
bool isFolder(const std::string& path);

/// Creates the missing folders of the path with the user's usual rights. Returns the error if it fails.
std::optional<FileError> makeFolder(const std::string& path);

/// The same with rights for the owner only. Existing folders keep their rights.
std::optional<FileError> makePrivateFolder(const std::string& path);

/// Leaves rights to a folder to its owner only.
void keepToOwner(const std::string& folder);

/// Also true for a dangling link.
bool exists(const std::string& path);

void remove(const std::string& path);

}  // namespace tolvane::Files
