#include "core/storage/Files.h"

#include "core/storage/FileDescriptor.h"

namespace tolvane::Files {

std::optional<std::string> read(const std::string& path) {
    const auto file = openForReading(path);
    if (!file) return std::nullopt;
    std::string bytes(static_cast<std::size_t>(file->regularStatus()->st_size), '\0');
    const auto count = file->readAt(0, bytes.data(), bytes.size());
    if (!count) return std::nullopt;
    bytes.resize(*count);
    return bytes;
}

}  // namespace tolvane::Files
