#pragma once

#include <optional>
#include <string>

#include "base/files/FileDescriptor.h"

namespace tolvane::linuxhost {

/// A kernel file that is opened once and read from its start each time, because opening costs more than reading.
/// Any thread. A file that is missing at construction stays missing.
class KernelFile {
public:
    explicit KernelFile(const std::string& path);

    /// Nullopt when the file is missing or cannot be read.
    std::optional<std::string> read() const;

private:
    FileDescriptor descriptor_;
};

}  // namespace tolvane::linuxhost
