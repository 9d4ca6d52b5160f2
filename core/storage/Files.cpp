#include "core/storage/Files.h"

#include <filesystem>

#include "core/storage/FileDescriptor.h"

namespace tolvane::Files {

namespace {

/// A thousand times what our files come to; a size that cannot be meant must not be asked of memory.
constexpr off_t largestWholeFile = off_t{1} << 30;

}  // namespace

std::optional<std::string> read(const std::string& path) {
    const auto file = openForReading(path);
    if (!file) return std::nullopt;
    const auto size = file->regularStatus()->st_size;
    if (size > largestWholeFile) return std::nullopt;
    std::string bytes(static_cast<std::size_t>(size), '\0');
    const auto count = file->readAt(0, bytes.data(), bytes.size());
    if (!count) return std::nullopt;
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
