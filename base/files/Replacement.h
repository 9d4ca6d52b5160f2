#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/files/FileDescriptor.h"

namespace tolvane::Files {

enum class Access {
    /// The rights of any file that the user creates; a replaced file keeps its own.
    usual,
    /// For the owner only, from the first byte on.
    ownerOnly,
};

/// Writes the new content of a file beside it and then renames it into place, so that readers see the old file or the
/// new one, even after a power cut: the content is flushed before the rename. Replaces a link, does not follow it.
/// The destructor removes content that was not committed.
class Replacement {
public:
    /// The folder must exist.
    Replacement(const std::string& path, Access access);
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement();

    /// After one call fails, all later ones do.
    bool write(std::string_view bytes);
    /// Moves the old file to `keepOldAs`, if given, and the new one into place. Returns false when the old file stayed.
    bool commit(const std::optional<std::string>& keepOldAs = std::nullopt);
    /// The errno of the first call that failed, or 0.
    int failure() const { return failure_; }

private:
    /// Records the errno of the first failure and returns `worked`.
    bool note(bool worked);

    std::string path_;
    std::string folder_;
    std::string temporary_;
    FileDescriptor file_;
    int failure_ = 0;
};

/// Replaces the whole content in one call.
bool replace(const std::string& path, std::string_view bytes, Access access,
             const std::optional<std::string>& keepOldAs = std::nullopt);

}  // namespace tolvane::Files
