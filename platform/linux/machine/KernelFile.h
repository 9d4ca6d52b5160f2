#pragma once

#include <optional>
#include <string>

#include "base/files/FileDescriptor.h"

namespace tolvane::linuxhost {

/// A file of the kernel that is opened once and read again and again from its start: opening costs more than reading.
/// Any thread. A file that is missing at the beginning stays missing.
class KernelFile {
public:
    explicit KernelFile(const std::string& path);

    /// None when the file is missing or refuses.
    std::optional<std::string> read() const;

private:
    FileDescriptor descriptor_;
};

}  // namespace tolvane::linuxhost
