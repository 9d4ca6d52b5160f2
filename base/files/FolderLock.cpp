#include "base/files/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

#include "base/files/Files.h"

namespace tolvane {

namespace {

constexpr unsigned ownersFile = 0600;

}  // namespace

FolderLock::FolderLock(const std::string& folder) {
    // If this fails, so does opening the file.
    Files::makePrivateFolder(folder);
    file_ = FileDescriptor::open(folder + "/.lock", O_RDWR | O_CREAT | O_NOFOLLOW, ownersFile);
    if (!file_) return;
    holds_ = ::flock(file_.get(), LOCK_EX | LOCK_NB) == 0;
    if (!holds_ && errno != EWOULDBLOCK) file_.reset();
}

}  // namespace tolvane
