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

/// The lines of a text file, one after the other, in one buffer that grows with the longest of them only. Lines end at
/// byte 10; empty ones are passed over, and so is what goes on for longer than any line that we write. One thread; a
/// few hundred kilobytes.
class LineFile {
public:
    struct Line {
        /// Without its line feed. Valid until the next call of `next`. At least `padding` more bytes may be read
        /// behind.
        std::string_view text;
        /// Where the line stands in the file, its line feed included.
        std::uint64_t begin = 0;
        std::uint64_t end = 0;
    };

    /// None when there is no such file, or it cannot be read, or is no regular file.
    static std::optional<LineFile> open(const std::string& path, std::size_t padding);

    /// None at the end, and from a failure on.
    std::optional<Line> next();
    /// A read failed, or the text is not UTF-8: then the lines so far are not to be trusted either.
    bool failed() const { return failed_; }
    /// Bytes of the file when it was opened.
    std::uint64_t size() const { return size_; }
    /// Position behind the latest line.
    std::uint64_t position() const { return offset_ + begin_; }

    /// Goes back to the file's begin.
    void rewind();
    /// Any bytes of the file; less at its end, none on failure.
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
    /// Unread bytes in the buffer.
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    /// Up to here there is no line feed among them.
    std::size_t searched_ = 0;
    /// Up to here they are known to be UTF-8.
    std::size_t checked_ = 0;
    /// Of the buffer's begin in the file.
    std::uint64_t offset_ = 0;
    bool atEnd_ = false;
    bool failed_ = false;
    /// Within a line that is too long, of which the begin is dropped.
    bool skipping_ = false;
};

}  // namespace tolvane::Files
