#include "base/files/Files.h"

#include <filesystem>

#include "base/files/FileDescriptor.h"

namespace tolvane::Files {

namespace {

/// A hundred times what our files come to; a size that cannot be meant must not be asked of memory.
constexpr std::size_t largestWholeFile = std::size_t{64} << 20U;

bool isFolder(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_directory(path, ignored);
}

}  // namespace

std::optional<std::string> read(const std::string& path) {
    auto bytes = readUpTo(path, largestWholeFile);
    if (!bytes) return std::nullopt;
    return std::move(*bytes);
}

Result<std::string, FileError> readUpTo(const std::string& path, std::size_t limit) {
    const auto failure = [&path](int code) { return FileError{.code = code, .path = path}; };
    const FileDescriptor file(path, O_RDONLY | O_NONBLOCK);
    if (!file.isOpen()) return failure(errno);
    const auto status = file.regularStatus();
    if (!status) return failure(isFolder(path) ? EISDIR : EINVAL);
    const auto size = static_cast<std::size_t>(status->st_size);
    if (size > limit) return failure(EFBIG);
    std::string bytes(size, '\0');
    const auto count = file.readAt(0, bytes.data(), bytes.size());
    if (!count) return failure(errno);
    bytes.resize(*count);
    return bytes;
}

namespace {

constexpr mode_t usualMode = 0666;
constexpr mode_t privateFolderMode = 0700;

bool appendTo(const FileDescriptor& file, std::string_view line) {
    const auto before = file.regularStatus();
    if (!before) return false;
    const std::size_t count = file.writeOnce(line);
    if (count == line.size()) return true;
    // Part of a line would take the next one with it.
    if (count > 0 && ::ftruncate(file.number(), before->st_size) != 0) return false;
    return false;
}

}  // namespace

bool append(const std::string& path, std::string_view line) {
    constexpr int flags = O_WRONLY | O_APPEND | O_NOFOLLOW | O_NONBLOCK;
    const FileDescriptor known(path, flags);
    if (known.isOpen()) return appendTo(known, line);
    const FileDescriptor made(path, flags | O_CREAT | O_EXCL, usualMode);
    return made.isOpen() && appendTo(made, line);
}

void makePrivateFolder(const std::string& path) {
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
    ::mkdir(path.c_str(), privateFolderMode);
    ::chmod(path.c_str(), privateFolderMode);
}

bool exists(const std::string& path) {
    struct stat status{};
    return ::lstat(path.c_str(), &status) == 0;
}

void remove(const std::string& path) { ::unlink(path.c_str()); }

}  // namespace tolvane::Files
