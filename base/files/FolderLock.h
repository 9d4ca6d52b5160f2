#pragma once

#include <string>

#include "base/files/FileDescriptor.h"

namespace tolvane {

/// Marks a folder as in use by this process for as long as this object lives. The kernel holds the lock, on the file
/// ".lock" in the folder, and releases it however the process ends.
class FolderLock {
public:
    /// Locks nothing.
    FolderLock() = default;
    /// Creates a missing folder with rights for its owner only.
    explicit FolderLock(const std::string& folder);

    /// Neither is true of a folder that cannot hold a file: nothing can be stored in it anyway.
    bool isHeld() const { return file_ && holds_; }
    bool isAnothers() const { return file_ && !holds_; }

private:
    /// Empty when neither this process nor another holds a lock.
    FileDescriptor file_;
    bool holds_ = false;
};

}  // namespace tolvane
