#include "base/files/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>

#include "base/UTF8.h"

namespace tolvane::Files {

namespace {

/// A hundred times the size of our files. An absurd size must not become an allocation.
constexpr std::size_t largestWholeFile = std::size_t{64} << 20U;
/// The packed references of a large repository take tens of megabytes.
constexpr std::size_t largestText = std::size_t{1} << 30U;
/// Most kernel files fit into one piece.
constexpr std::size_t pieceSize = 8192;

/// Does not block on a pipe or a device.
FileDescriptor openWithoutWaiting(const std::string& path) { return FileDescriptor::open(path, O_RDONLY | O_NONBLOCK); }

/// Returns the whole file, or an errno. Reads beyond `statedSize`: kernel files state 0, and others may grow meanwhile.
Result<std::string, int> readToEnd(const FileDescriptor& file, std::size_t statedSize, std::size_t limit) {
    std::string bytes(statedSize, '\0');
    const auto stated = file.readAt(0, bytes.data(), bytes.size());
    if (!stated) return errno;
    bytes.resize(*stated);
    // The kernel fills it. NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
    std::array<char, pieceSize> piece;
    for (;;) {
        const auto count = file.readAt(bytes.size(), piece.data(), piece.size());
        if (!count) return errno;
        bytes.append(piece.data(), *count);
        if (bytes.size() > limit) return EFBIG;
        if (*count < piece.size()) return bytes;
    }
}

template <typename Failure>
std::optional<std::string> valueOf(Result<std::string, Failure> bytes) {
    if (!bytes) return std::nullopt;
    return std::move(*bytes);
}

}  // namespace

std::optional<std::string> read(const std::string& path) { return valueOf(readUpTo(path, largestWholeFile)); }

Result<std::string, FileError> readUpTo(const std::string& path, std::size_t limit) {
    const auto failure = [&path](int code) { return FileError{.code = code, .path = path}; };
    const auto file = openWithoutWaiting(path);
    if (!file) return failure(errno);
    const auto size = file.regularSize();
    if (!size) return failure(isFolder(path) ? EISDIR : EINVAL);
    if (*size > limit) return failure(EFBIG);
    auto bytes = readToEnd(file, static_cast<std::size_t>(*size), limit);
    if (!bytes) return failure(bytes.failure());
    return std::move(*bytes);
}

std::optional<std::string> readText(const std::string& path) {
    auto bytes = valueOf(readUpTo(path, largestText));
    return bytes && UTF8::isValid(*bytes) ? std::move(bytes) : std::nullopt;
}

std::optional<std::string> readStart(const std::string& path, std::size_t size) {
    const auto file = openForReading(path);
    std::string bytes(size, '\0');
    const auto count = file.readAt(0, bytes.data(), bytes.size());
    if (!count) return std::nullopt;
    bytes.resize(*count);
    return bytes;
}

std::optional<std::string> readKernelFile(const std::string& path, std::size_t limit) {
    const auto file = openWithoutWaiting(path);
    if (!file) return std::nullopt;
    return valueOf(readToEnd(file, 0, limit));
}

FileDescriptor openForReading(const std::string& path) {
    auto file = openWithoutWaiting(path);
    if (!file.regularSize()) file.reset();
    return file;
}

namespace {

constexpr unsigned usualMode = 0666;
constexpr mode_t privateFolderMode = 0700;

bool appendTo(const FileDescriptor& file, std::string_view line) {
    const auto before = file.regularSize();
    if (!before) return false;
    const std::size_t count = file.writeOnce(line);
    if (count == line.size()) return true;
    // A torn line would also spoil the next one.
    if (count > 0 && ::ftruncate(file.get(), static_cast<off_t>(*before)) != 0) return false;
    return false;
}

/// Sets errno when it returns false.
bool makeOnePrivateFolder(const std::string& path) {
    return ::mkdir(path.c_str(), privateFolderMode) == 0 || errno == EEXIST;
}

}  // namespace

bool append(const std::string& path, std::string_view line) {
    constexpr int flags = O_WRONLY | O_APPEND | O_NOFOLLOW | O_NONBLOCK;
    if (const auto known = FileDescriptor::open(path, flags)) return appendTo(known, line);
    const auto made = FileDescriptor::open(path, flags | O_CREAT | O_EXCL, usualMode);
    return made && appendTo(made, line);
}

bool isFolder(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_directory(path, ignored);
}

std::optional<FileError> makeFolder(const std::string& path) {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (!error) return std::nullopt;
    return FileError{.code = error.value(), .path = path};
}

std::optional<FileError> makePrivateFolder(const std::string& path) {
    if (path.empty() || makeOnePrivateFolder(path)) return std::nullopt;
    if (errno == ENOENT) {
        if (auto error = makePrivateFolder(std::filesystem::path(path).parent_path().string())) return error;
        if (makeOnePrivateFolder(path)) return std::nullopt;
    }
    return FileError{.code = errno, .path = path};
}

void keepToOwner(const std::string& folder) { ::chmod(folder.c_str(), privateFolderMode); }

bool exists(const std::string& path) {
    struct stat status{};
    return ::lstat(path.c_str(), &status) == 0;
}

void remove(const std::string& path) { ::unlink(path.c_str()); }

}  // namespace tolvane::Files
