#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tolvane::Files {

/// Owns one open file. Move-only.
class FileDescriptor {
public:
    /// As ::open; `isOpen` tells whether it worked. Never handed on to a child process.
    FileDescriptor(const std::string& path, int flags, mode_t mode = 0);
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&&) = delete;
    ~FileDescriptor();

    bool isOpen() const { return number_ >= 0; }
    int number() const { return number_; }
    /// None for what is no regular file.
    std::optional<struct stat> regularStatus() const;
    /// How many bytes arrived at `buffer`, less than `size` only at the file's end; none on failure.
    std::optional<std::size_t> readAt(std::uint64_t offset, char* buffer, std::size_t size) const;
    /// Goes on until all is written or the disk refuses.
    bool writeAll(std::string_view bytes) const;
    /// In one call: how many bytes were taken.
    std::size_t writeOnce(std::string_view bytes) const;

private:
    int number_;
};

/// A regular file opened for reading; a pipe or a device is refused without waiting for it.
std::optional<FileDescriptor> openForReading(const std::string& path);

}  // namespace tolvane::Files
