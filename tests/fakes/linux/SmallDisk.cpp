#include "tests/fakes/SmallDisk.h"

#include <sys/mount.h>

namespace tolvane::fakes {

SmallDisk::SmallDisk() : mounted_(::mount("none", folder_.path().c_str(), "tmpfs", 0, "size=64k") == 0) {}

SmallDisk::~SmallDisk() {
    if (mounted_) ::umount(folder_.path().c_str());
}

bool SmallDisk::makeReadOnly() const {
    return ::mount("none", folder_.path().c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, "size=64k") == 0;
}

}  // namespace tolvane::fakes
