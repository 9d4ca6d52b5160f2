#include "tests/fakes/SmallDisk.h"

namespace tolvane::fakes {

// macOS has disks in memory too, but no call that mounts one.
SmallDisk::SmallDisk() : mounted_(false) {}
SmallDisk::~SmallDisk() = default;
bool SmallDisk::makeReadOnly() const { return mounted_; }

}  // namespace tolvane::fakes
