#include "base/files/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace tolvane {

namespace {

template <typename Call>
auto untilUninterrupted(const Call& call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

}  // namespace

FileDescriptor FileDescriptor::open(const std::string& path, int flags, unsigned mode) {
    return FileDescriptor(untilUninterrupted([&] { return ::open(path.c_str(), flags | O_CLOEXEC, mode); }));
}

void FileDescriptor::close() const { ::close(number_); }

std::optional<std::uint64_t> FileDescriptor::regularSize() const {
    struct stat status{};
    if (::fstat(number_, &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    return static_cast<std::uint64_t>(status.st_size);
}

std::optional<std::size_t> FileDescriptor::readAt(std::uint64_t offset, char* buffer, std::size_t size) const {
    std::size_t done = 0;
    while (done < size) {
        const auto count = untilUninterrupted(
            [&] { return ::pread(number_, buffer + done, size - done, static_cast<off_t>(offset + done)); });
        if (count < 0) return std::nullopt;
        if (count == 0) break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

bool FileDescriptor::writeAll(std::string_view bytes) const {
    while (!bytes.empty()) {
        const std::size_t count = writeOnce(bytes);
        if (count == 0) return false;
        bytes.remove_prefix(count);
    }
    return true;
}

std::size_t FileDescriptor::writeOnce(std::string_view bytes) const {
    const auto count = untilUninterrupted([&] { return ::write(number_, bytes.data(), bytes.size()); });
    return count < 0 ? 0 : static_cast<std::size_t>(count);
}

}  // namespace tolvane
