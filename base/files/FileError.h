#pragma once

#include <string>

namespace tolvane {

/// Why a file was not read or written.
struct FileError {
    /// An errno. A pipe or a device where a file is wanted is EINVAL, a file beyond the limit EFBIG.
    int code = 0;
    std::string path;

    /// One sentence that names the file: "Rules.tolvanerules does not exist."
    std::string text() const;
    bool operator==(const FileError&) const = default;
};

}  // namespace tolvane
