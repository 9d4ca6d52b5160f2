#include "base/files/Replacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>

namespace tolvane::Files {

namespace {

constexpr mode_t usualMode = 0666;
constexpr mode_t ownerOnlyMode = 0600;
constexpr mode_t allRights = 0777;

/// The rights of the file to replace; nullopt when it is missing or not a regular file.
std::optional<mode_t> rightsOf(const std::string& path) {
    struct stat status{};
    if (::lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    return status.st_mode & allRights;
}

/// One name per target: if a run dies in between, it leaves one file that the next run removes.
std::string temporaryFor(const std::filesystem::path& target) {
    return (target.parent_path() / ("." + target.filename().string() + ".new")).string();
}

}  // namespace

Replacement::Replacement(const std::string& path, Access access)
    : path_(path),
      folder_(std::filesystem::path(path).parent_path().string()),
      temporary_(temporaryFor(std::filesystem::path(path))) {
    const auto rights = access == Access::ownerOnly ? ownerOnlyMode : rightsOf(path);
    ::unlink(temporary_.c_str());
    file_ = FileDescriptor::open(temporary_, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, rights.value_or(usualMode));
    if (!note(static_cast<bool>(file_))) return;
    // Settled rights must not pass through the umask.
    if (rights) note(::fchmod(file_.get(), *rights) == 0);
}

Replacement::~Replacement() {
    if (!temporary_.empty() && file_) ::unlink(temporary_.c_str());
}

bool Replacement::note(bool worked) {
    if (!worked && failure_ == 0) failure_ = errno;
    return worked;
}

bool Replacement::write(std::string_view bytes) { return failure_ == 0 && note(file_.writeAll(bytes)); }

bool Replacement::commit(const std::optional<std::string>& keepOldAs) {
    if (failure_ != 0 || !note(::fsync(file_.get()) == 0)) return false;
    if (keepOldAs && !note(std::rename(path_.c_str(), keepOldAs->c_str()) == 0)) return false;
    if (!note(std::rename(temporary_.c_str(), path_.c_str()) == 0)) return false;
    temporary_.clear();
    const auto folder = FileDescriptor::open(folder_, O_RDONLY | O_DIRECTORY);
    if (folder) ::fsync(folder.get());
    return true;
}

bool replace(const std::string& path, std::string_view bytes, Access access,
             const std::optional<std::string>& keepOldAs) {
    Replacement replacement(path, access);
    return replacement.write(bytes) && replacement.commit(keepOldAs);
}

}  // namespace tolvane::Files
