#pragma once

#include <string>

#include "base/files/FileDescriptor.h"

namespace tolvane {

/// Says that a folder is in use by this process, for as long as this object lives. It is the kernel that holds the
/// lock, on the file ".lock" in the folder, and lets go of it however the process ends.
class FolderLock {
public:
    /// Of no folder.
    FolderLock() = default;
    /// Makes the folder, for its owner alone, when it is not there.
    explicit FolderLock(const std::string& folder);

    /// A folder that cannot hold a file is neither held nor another's: nothing can be stored in it anyway.
    bool isHeld() const { return file_ && holds_; }
    bool isAnothers() const { return file_ && !holds_; }

private:
    /// Empty where there is no lock to speak of.
    FileDescriptor file_;
    bool holds_ = false;
};

}  // namespace tolvane
