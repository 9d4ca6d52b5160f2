#pragma once

#include <string>
#include <string_view>

#include "tests/fakes/TemporaryFolder.h"

namespace tolvane::fakes {

/// A file system of a few pages; mounted only where the system has such a file system and the user may mount it.
class SmallDisk {
public:
    SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    ~SmallDisk();

    bool isMounted() const { return mounted_; }
    /// After this, nothing on the disk can change.
    bool makeReadOnly() const;
    std::string operator/(std::string_view name) const { return folder_ / name; }

private:
    TemporaryFolder folder_;
    bool mounted_;
};

}  // namespace tolvane::fakes
