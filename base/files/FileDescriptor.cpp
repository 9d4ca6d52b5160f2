#include "base/files/FileDescriptor.h"

namespace tolvane::Files {

namespace {

template <typename Call>
auto untilUninterrupted(const Call& call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

}  // namespace

FileDescriptor::FileDescriptor(const std::string& path, int flags, mode_t mode)
    : number_(untilUninterrupted([&] { return ::open(path.c_str(), flags | O_CLOEXEC, mode); })) {}

FileDescriptor::~FileDescriptor() {
    if (isOpen()) ::close(number_);
}

std::optional<struct stat> FileDescriptor::regularStatus() const {
    struct stat status{};
    if (::fstat(number_, &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    return status;
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

std::optional<FileDescriptor> openForReading(const std::string& path) {
    FileDescriptor file(path, O_RDONLY | O_NONBLOCK);
    if (!file.isOpen() || !file.regularStatus()) return std::nullopt;
    return file;
}

}  // namespace tolvane::Files
