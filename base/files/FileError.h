#pragma once

#include <string>

namespace tolvane {

/// Why a file could not be read or written.
struct FileError {
    /// An errno. EINVAL for a pipe or a device in place of a file, EFBIG for a file above the limit.
    int code = 0;
    std::string path;

    /// One sentence that names the file: "Rules.tolvanerules does not exist."
    std::string text() const;
    bool operator==(const FileError&) const = default;
};

}  // namespace tolvane
