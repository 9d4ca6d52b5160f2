#include "platform/linux/machine/KernelFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace tolvane::linuxhost {

namespace {

/// Enough for /proc/meminfo, /proc/vmstat (4.6 kB) or the /proc/stat of some dozen cores in one read.
constexpr std::size_t pieceSize = 8192;

}  // namespace

KernelFile::KernelFile(const std::string& path) : descriptor_(FileDescriptor::open(path, O_RDONLY)) {}

std::optional<std::string> KernelFile::read() const {
    if (!descriptor_) return std::nullopt;
    std::string bytes;
    std::size_t size = 0;
    for (;;) {
        bytes.resize(size + pieceSize);
        const auto got = ::pread(descriptor_.get(), bytes.data() + size, pieceSize, static_cast<off_t>(size));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return std::nullopt;
        size += static_cast<std::size_t>(got);
        // Kernel files come a page at a time, so a short read is not the end.
        if (got == 0) break;
    }
    bytes.resize(size);
    return bytes;
}

}  // namespace tolvane::linuxhost
