#include "platform/linux/processes/ProcFiles.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstddef>
#include <cstring>

namespace tolvane::linuxhost {

namespace {

/// The record that getdents64 writes; glibc does not export it.
struct DirectoryRecord {
    std::uint64_t inode;
    std::int64_t next;
    std::uint16_t length;
    std::uint8_t type;
    char name[1];
};
constexpr std::size_t nameOffset = offsetof(DirectoryRecord, name);

/// Calls `visit` with each name in an open folder, from its start. False when it cannot be listed.
template <typename Visit>
bool forEachName(int folder, char* buffer, std::size_t size, Visit visit) {
    for (;;) {
        const long filled = ::syscall(SYS_getdents64, folder, buffer, size);
        if (filled <= 0) return filled == 0;
        for (long at = 0; at < filled;) {
            std::uint16_t length = 0;
            std::memcpy(&length, buffer + at + offsetof(DirectoryRecord, length), sizeof length);
            visit(static_cast<const char*>(buffer + at + nameOffset));
            at += length;
        }
    }
}

Pid pidNamed(const char* name) {
    if (*name < '1' || *name > '9') return 0;
    Pid pid = 0;
    const auto result = std::from_chars(name, name + std::strlen(name), pid);
    return result.ec == std::errc{} && *result.ptr == '\0' ? pid : 0;
}

}  // namespace

// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
PidPath::PidPath(Pid pid, std::string_view leaf) {
    auto* at = std::to_chars(text_.data(), text_.data() + 12, pid).ptr;
    *at++ = '/';
    const auto length = std::min(leaf.size(), static_cast<std::size_t>(text_.data() + text_.size() - at) - 1);
    std::memcpy(at, leaf.data(), length);
    at[length] = '\0';
}

ProcFiles::ProcFiles(const std::string& root, Observer observer)
    : folder_(FileDescriptor::open(root, O_RDONLY | O_DIRECTORY)),
      observer_(std::move(observer)),
      buffer_(std::make_unique_for_overwrite<char[]>(bufferSize)) {}

bool ProcFiles::listPids(std::vector<Pid>& pids) {
    note(".");
    pids.clear();
    if (!folder_ || ::lseek(folder_.get(), 0, SEEK_SET) < 0) return false;
    const bool listed = forEachName(folder_.get(), buffer_.get(), bufferSize, [&](const char* name) {
        if (const Pid pid = pidNamed(name)) pids.push_back(pid);
    });
    // /proc lists in ascending order; other file systems do not.
    if (!std::ranges::is_sorted(pids)) std::ranges::sort(pids);
    return listed;
}

bool ProcFiles::listNames(const char* path, std::vector<std::string>& names) {
    names.clear();
    const FileDescriptor folder = open(path);
    if (!folder) return false;
    return forEachName(folder.get(), buffer_.get(), bufferSize, [&](const char* name) {
        if (std::strcmp(name, ".") != 0 && std::strcmp(name, "..") != 0) names.emplace_back(name);
    });
}

FileDescriptor ProcFiles::open(const char* path) {
    note(path);
    return FileDescriptor(::openat(folder_.get(), path, O_RDONLY | O_CLOEXEC));
}

std::optional<std::string_view> ProcFiles::read(const char* path) {
    const FileDescriptor file = open(path);
    if (!file) return std::nullopt;
    const ssize_t length = ::read(file.get(), buffer_.get(), bufferSize);
    if (length < 0) return std::nullopt;
    return std::string_view(buffer_.get(), static_cast<std::size_t>(length));
}

std::optional<std::string_view> ProcFiles::readAgain(const FileDescriptor& file) {
    if (!file) return std::nullopt;
    const ssize_t length = ::pread(file.get(), buffer_.get(), bufferSize, 0);
    if (length < 0) return std::nullopt;
    return std::string_view(buffer_.get(), static_cast<std::size_t>(length));
}

void ProcFiles::readAgainWhole(const FileDescriptor& file, std::string& content) {
    content.clear();
    while (file && content.size() < wholeLimit) {
        const ssize_t length = ::pread(file.get(), buffer_.get(), bufferSize, static_cast<off_t>(content.size()));
        if (length <= 0) return;
        content.append(buffer_.get(), static_cast<std::size_t>(length));
    }
}

bool ProcFiles::readWhole(const char* path, std::string& content) {
    content.clear();
    const FileDescriptor file = open(path);
    if (!file) return false;
    while (content.size() < wholeLimit) {
        const ssize_t length = ::read(file.get(), buffer_.get(), bufferSize);
        if (length < 0 && errno == EINTR) continue;
        if (length < 0) return false;
        if (length == 0) return true;
        content.append(buffer_.get(), static_cast<std::size_t>(length));
    }
    return true;
}

std::optional<std::string_view> ProcFiles::readLink(const char* path) {
    note(path);
    const ssize_t length = ::readlinkat(folder_.get(), path, link_.data(), link_.size());
    if (length < 0) return std::nullopt;
    return std::string_view(link_.data(), static_cast<std::size_t>(length));
}

std::string executableOf(const std::string& proc, Pid pid) {
    std::array<char, PATH_MAX> target{};
    const auto length = ::readlink((proc + "/" + std::to_string(pid) + "/exe").c_str(), target.data(), target.size());
    return length > 0 ? std::string(target.data(), static_cast<std::size_t>(length)) : std::string();
}

}  // namespace tolvane::linuxhost
