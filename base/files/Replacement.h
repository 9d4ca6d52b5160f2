#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/files/FileDescriptor.h"

namespace tolvane::Files {

enum class Access {
    /// As any file that the user makes; a file that is replaced keeps its rights.
    usual,
    /// Nobody but the owner, from the first byte on.
    ownerOnly,
};

/// The new content of a file, written beside it and put in its place at once: readers and a power cut see the old file
/// or the new one. It is on the disk before it takes the place. A link in that place is replaced, not followed.
/// What is never put in place goes with this object.
class Replacement {
public:
    /// The folder exists.
    Replacement(const std::string& path, Access access);
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement();

    /// Once a call failed, all later ones do.
    bool write(std::string_view bytes);
    /// Puts it in place, and the old file to `keepOldAs` where given. False when the old file stands as it did.
    bool commit(const std::optional<std::string>& keepOldAs = std::nullopt);
    /// The errno of the first call that failed; 0 while none did.
    int failure() const { return failure_; }

private:
    /// Keeps the reason when it did not work.
    bool note(bool worked);

    std::string path_;
    std::string folder_;
    std::string temporary_;
    FileDescriptor file_;
    int failure_ = 0;
};

/// The whole content in one call.
bool replace(const std::string& path, std::string_view bytes, Access access,
             const std::optional<std::string>& keepOldAs = std::nullopt);

}  // namespace tolvane::Files
