#include "platform/linux/text/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "platform/linux/text/FileDescriptor.h"

namespace tolvane::linuxhost {

namespace {

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

std::string folderOf(const std::string& path) { return std::filesystem::path(path).parent_path().string(); }

/// Makes what is missing of the path, for this user only; what stands keeps its rights.
bool makePrivateFolder(const std::string& folder) {
    if (folder.empty() || ::mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST) return true;
    if (errno != ENOENT) return false;
    return makePrivateFolder(folderOf(folder)) && (::mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST);
}

}  // namespace

std::optional<std::string> readWholeFile(const std::string& path, std::size_t limit) {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file) return std::nullopt;
    std::string bytes;
    std::array<char, 8192> piece{};
    for (;;) {
        const auto got = ::read(file.get(), piece.data(), piece.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return std::nullopt;
        if (got == 0) return bytes;
        bytes.append(piece.data(), static_cast<std::size_t>(got));
        if (bytes.size() > limit) return std::nullopt;
    }
}

std::optional<std::string> writeBeside(const std::string& path, std::string_view bytes) {
    if (!makePrivateFolder(folderOf(path))) return std::nullopt;
    std::string beside = path + ".XXXXXX";
    const FileDescriptor file(::mkostemp(beside.data(), O_CLOEXEC));
    if (!file) return std::nullopt;
    if (writeAll(file.get(), bytes) && ::fsync(file.get()) == 0) return beside;
    ::unlink(beside.c_str());
    return std::nullopt;
}

bool moveInto(const std::string& path, const std::string& beside) {
    if (::rename(beside.c_str(), path.c_str()) != 0) {
        ::unlink(beside.c_str());
        return false;
    }
    const FileDescriptor folder(::open(folderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder) ::fsync(folder.get());
    return true;
}

}  // namespace tolvane::linuxhost
