#pragma once

#include <optional>
#include <string>

namespace tolvane {

/// A whole file as text. None when it cannot be read, is no regular file, or is not valid UTF-8. Blocks on the disk.
std::optional<std::string> readTextFile(const std::string& path);

}  // namespace tolvane
