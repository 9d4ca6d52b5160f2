#pragma once

#include <string>
#include <utility>

namespace tolvane {

/// Says that a folder is in use by this process, for as long as this object lives. It is the kernel that holds the
/// lock, on the file ".lock" in the folder, and lets go of it however the process ends.
class FolderLock {
public:
    /// Of no folder.
    FolderLock() = default;
    /// Makes the folder, for its owner alone, when it is not there.
    explicit FolderLock(const std::string& folder);

    FolderLock(FolderLock&& other) noexcept
        : file_(std::exchange(other.file_, -1)), state_(std::exchange(other.state_, State::none)) {}
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    FolderLock& operator=(FolderLock&&) = delete;
    ~FolderLock();

    /// A folder that cannot hold a file is neither held nor another's: nothing can be stored in it anyway.
    bool isHeld() const { return state_ == State::held; }
    bool isAnothers() const { return state_ == State::anothers; }

private:
    enum class State { none, held, anothers };

    int file_ = -1;
    State state_ = State::none;
};

}  // namespace tolvane
