#pragma once

#include <fcntl.h>

#include <cstdint>
#include <filesystem>
#include <string>

namespace tolvane::linuxhost::testing {

/// How many descriptors of this test program a child inherits from whatever started the tests.
inline int inheritableDescriptors() {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        const int flags = ::fcntl(std::stoi(entry.path().filename().string()), F_GETFD);
        count += flags >= 0 && (flags & FD_CLOEXEC) == 0 ? 1 : 0;
    }
    return count;
}

/// The signals in a line such as "SigIgn: 0000000180001000" of a status file, except the two that the C library
/// reserves.
inline std::uint64_t signalsOf(const std::string& status, const std::string& line) {
    constexpr std::uint64_t internal = 0x1'8000'0000;
    const auto at = status.find(line + ":\t");
    return at == std::string::npos ? ~0ULL
                                   : std::stoull(status.substr(at + line.size() + 2, 16), nullptr, 16) & ~internal;
}

}  // namespace tolvane::linuxhost::testing
