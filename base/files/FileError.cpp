#include "base/files/FileError.h"

#include <cerrno>
#include <string_view>
#include <system_error>

#include "base/Paths.h"
#include "base/UTF8.h"

namespace tolvane {

namespace {

/// The text after the file's name; empty where the system's own message is clear enough.
std::string_view plainWords(int code) {
    switch (code) {
        case ENOENT:
        case ENOTDIR:
            return " does not exist.";
        case EACCES:
        case EPERM:
            return " is not accessible to this user.";
        case EISDIR:
            return " is a folder.";
        case EINVAL:
            return " is not a regular file.";
        case EFBIG:
            return " is too large.";
        case ENOSPC:
        case EDQUOT:
            return " does not fit on the disk.";
        case EROFS:
            return " is on a disk that cannot be written to.";
        default:
            return {};
    }
}

}  // namespace

std::string FileError::text() const {
    const std::string name = UTF8::repaired(Paths::lastComponent(path));
    if (const auto words = plainWords(code); !words.empty()) return name + std::string(words);
    return name + ": " + std::generic_category().message(code) + ".";
}

}  // namespace tolvane
