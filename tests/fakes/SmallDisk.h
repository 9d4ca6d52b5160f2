#pragma once

#include <sys/mount.h>

#include <string>
#include <string_view>

#include "tests/fakes/TemporaryFolder.h"

namespace tolvane::fakes {

/// A file system of a few pages, where the user has the right to mount one.
class SmallDisk {
public:
    SmallDisk() : mounted_(::mount("none", folder_.path().c_str(), "tmpfs", 0, "size=64k") == 0) {}
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    ~SmallDisk() {
        if (mounted_) ::umount(folder_.path().c_str());
    }

    bool isMounted() const { return mounted_; }
    /// From here on nothing on it changes.
    bool makeReadOnly() const {
        return ::mount("none", folder_.path().c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, "size=64k") == 0;
    }
    std::string operator/(std::string_view name) const { return folder_ / name; }

private:
    TemporaryFolder folder_;
    bool mounted_;
};

}  // namespace tolvane::fakes
