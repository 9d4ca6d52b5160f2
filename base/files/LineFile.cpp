#include "base/files/LineFile.h"

#include <cstring>
#include <utility>

#include "base/UTF8.h"
#include "base/files/Files.h"

namespace tolvane::Files {

namespace {

/// Small enough for the second-level cache, large enough that the system calls do not count.
constexpr std::size_t chunk = 256U * 1024U;
/// Thousands of times the length of our lines. A hole in a file reads as one line of zeros.
constexpr std::size_t longestLine = 16U * 1024U * 1024U;

}  // namespace

std::optional<LineFile> LineFile::open(const std::string& path, std::size_t padding) {
    auto file = openForReading(path);
    const auto size = file.regularSize();
    if (!size) return std::nullopt;
    return LineFile(std::move(file), *size, padding);
}

std::optional<LineFile::Line> LineFile::next() {
    while (!failed_) {
        const char* from = buffer_.get() + searched_;
        const auto* feed =
            static_cast<const char*>(searched_ == end_ ? nullptr : std::memchr(from, '\n', end_ - searched_));
        if (feed) {
            const auto end = static_cast<std::size_t>(feed - buffer_.get());
            const bool whole = !std::exchange(skipping_, false);
            if (auto line = lineEndingAt(end, end + 1); line && whole) return line;
        } else if (atEnd_) {
            const auto last = lineEndingAt(end_, end_);
            return skipping_ ? std::nullopt : last;
        } else {
            searched_ = end_;
            failed_ = !fill();
        }
    }
    return std::nullopt;
}

std::optional<LineFile::Line> LineFile::lineEndingAt(std::size_t end, std::size_t next) {
    const std::size_t begin = std::exchange(begin_, next);
    searched_ = next;
    if (begin == end) return std::nullopt;
    return Line{.text = {buffer_.get() + begin, end - begin}, .begin = offset_ + begin, .end = offset_ + next};
}

bool LineFile::fill() {
    if (!makeRoom()) return false;
    const auto count = file_.readAt(offset_ + end_, buffer_.get() + end_, capacity_ - end_);
    if (!count) return false;
    atEnd_ = *count < capacity_ - end_;
    end_ += *count;
    std::memset(buffer_.get() + end_, 0, padding_);
    return check();
}

bool LineFile::makeRoom() {
    if (skipping_ || end_ - begin_ >= longestLine) dropUnread();
    const std::size_t unread = end_ - begin_;
    if (begin_ > 0) std::memmove(buffer_.get(), buffer_.get() + begin_, unread);
    offset_ += begin_;
    searched_ -= begin_;
    checked_ -= begin_;
    end_ = unread;
    begin_ = 0;
    return unread < capacity_ || grow(capacity_ == 0 ? chunk : 2 * capacity_);
}

void LineFile::dropUnread() {
    skipping_ = true;
    begin_ = searched_ = checked_ = end_;
}

bool LineFile::grow(std::size_t capacity) {
    // realloc remaps large blocks instead of copying them.
    void* memory = std::realloc(buffer_.get(), capacity + padding_);
    if (!memory) return false;
    static_cast<void>(buffer_.release());
    buffer_.reset(static_cast<char*>(memory));
    capacity_ = capacity;
    return true;
}

bool LineFile::check() {
    if (skipping_) {
        // The start of the line is gone, perhaps within a character.
        const auto feed = std::string_view(buffer_.get(), end_).find('\n', checked_);
        checked_ = feed == std::string_view::npos ? end_ : feed + 1;
    }
    // A chunk may end within a character; a line cannot.
    const std::string_view bytes(buffer_.get() + checked_, end_ - checked_);
    const auto feed = bytes.rfind('\n');
    const std::size_t whole = atEnd_ ? bytes.size() : feed == std::string_view::npos ? 0 : feed + 1;
    if (!UTF8::isValid(bytes.substr(0, whole))) return false;
    checked_ += whole;
    return true;
}

void LineFile::rewind() {
    begin_ = end_ = searched_ = checked_ = 0;
    offset_ = 0;
    atEnd_ = failed_ = skipping_ = false;
}

std::optional<std::string> LineFile::bytes(std::uint64_t begin, std::size_t count) const {
    std::string bytes(count, '\0');
    const auto read = file_.readAt(begin, bytes.data(), count);
    if (!read) return std::nullopt;
    bytes.resize(*read);
    return bytes;
}

}  // namespace tolvane::Files
