#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tolvane {

/// Owns one descriptor (a file, a pipe, a socket, a timer) and closes it. Move-only; empty where a call failed.
class FileDescriptor {
public:
    FileDescriptor() = default;
    /// Takes ownership of what a system call returned; -1 leaves it empty.
    explicit FileDescriptor(int number) : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        if (this != &other) reset(std::exchange(other.number_, -1));
        return *this;
    }
    ~FileDescriptor() {
        if (number_ >= 0) close();
    }

    /// Like ::open, but child processes do not inherit the file. Empty, with errno set, when the system refuses.
    static FileDescriptor open(const std::string& path, int flags, unsigned mode = 0);

    int get() const { return number_; }
    explicit operator bool() const { return number_ >= 0; }
    void reset(int number = -1) {
        if (number_ >= 0) close();
        number_ = number;
    }

    /// The size of a regular file in bytes; nullopt for anything else.
    std::optional<std::uint64_t> regularSize() const;
    /// How many bytes arrived at `buffer`, fewer than `size` only at the end of the file; nullopt with errno set on
    /// failure.
    std::optional<std::size_t> readAt(std::uint64_t offset, char* buffer, std::size_t size) const;
    /// Writes until all bytes are written or the disk refuses.
    bool writeAll(std::string_view bytes) const;
    /// Writes in one call and returns how many bytes the system took.
    std::size_t writeOnce(std::string_view bytes) const;

private:
    void close() const;

    int number_ = -1;
};

}  // namespace tolvane
