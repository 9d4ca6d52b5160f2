#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/files/FileDescriptor.h"

namespace tolvane::Files {

/// Reads the lines of a text file one by one, in a buffer that grows only with the longest line. Lines end at byte 10.
/// Skips empty lines and lines far longer than any that we write. One thread; a few hundred kilobytes.
class LineFile {
public:
    struct Line {
        /// Without its line feed. Valid until the next call of `next`. At least `padding` bytes after it are
        /// readable.
        std::string_view text;
        /// The position of the line in the file, including its line feed.
        std::uint64_t begin = 0;
        std::uint64_t end = 0;
    };

    /// Returns nullopt when the file is missing, unreadable or not a regular file.
    static std::optional<LineFile> open(const std::string& path, std::size_t padding);

    /// Returns nullopt at the end and after a failure.
    std::optional<Line> next();
    /// A read failed or the text is not UTF-8. The lines so far cannot be trusted either.
    bool failed() const { return failed_; }
    /// The size of the file in bytes when it was opened.
    std::uint64_t size() const { return size_; }
    /// The position after the latest line.
    std::uint64_t position() const { return offset_ + begin_; }

    /// Goes back to the start of the file.
    void rewind();
    /// Any bytes of the file: fewer at its end, nullopt on failure.
    std::optional<std::string> bytes(std::uint64_t begin, std::size_t count) const;

private:
    struct Release {
        void operator()(char* memory) const { std::free(memory); }
    };

    LineFile(FileDescriptor file, std::uint64_t size, std::size_t padding)
        : file_(std::move(file)), size_(size), padding_(padding) {}

    std::optional<Line> lineEndingAt(std::size_t end, std::size_t next);
    bool fill();
    bool makeRoom();
    void dropUnread();
    bool grow(std::size_t capacity);
    bool check();

    FileDescriptor file_;
    std::uint64_t size_;
    std::size_t padding_;
    std::unique_ptr<char[], Release> buffer_;
    std::size_t capacity_ = 0;
    /// The unread bytes in the buffer.
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    /// No line feed among them up to here.
    std::size_t searched_ = 0;
    /// Known to be UTF-8 up to here.
    std::size_t checked_ = 0;
    /// The position in the file at which the buffer starts.
    std::uint64_t offset_ = 0;
    bool atEnd_ = false;
    bool failed_ = false;
    /// Inside an overlong line whose start was dropped.
    bool skipping_ = false;
};

}  // namespace tolvane::Files
