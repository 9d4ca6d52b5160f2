#include "base/files/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace tolvane {

namespace {

constexpr mode_t ownersFolder = 0700;
constexpr mode_t ownersFile = 0600;

void makeFolder(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(folder).parent_path(), error);
    // One that is there, or cannot be, shows when the file is opened.
    static_cast<void>(::mkdir(folder.c_str(), ownersFolder));
}

}  // namespace

FolderLock::FolderLock(const std::string& folder) {
    makeFolder(folder);
    const auto path = folder + "/.lock";
    file_ = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, ownersFile);
    if (file_ < 0) return;
    if (::flock(file_, LOCK_EX | LOCK_NB) == 0) {
        state_ = State::held;
    } else if (errno == EWOULDBLOCK) {
        state_ = State::anothers;
    }
}

FolderLock::~FolderLock() {
    if (file_ >= 0) ::close(file_);
}

}  // namespace tolvane
