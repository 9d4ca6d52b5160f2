#pragma once

#include <string>
#include <string_view>

#include "tests/fakes/TemporaryFolder.h"

namespace tolvane::fakes {

/// A file system of a few pages, where the user has the right to mount one and the system has such.
class SmallDisk {
public:
    SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    ~SmallDisk();

    bool isMounted() const { return mounted_; }
    /// From here on nothing on it changes.
    bool makeReadOnly() const;
    std::string operator/(std::string_view name) const { return folder_ / name; }

private:
    TemporaryFolder folder_;
    bool mounted_;
};

}  // namespace tolvane::fakes
