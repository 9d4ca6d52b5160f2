#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

/// The memory of this program as the kernel counts it.
namespace tolvane::linuxhost::OwnMemory {

/// A stretch of addresses.
struct Stretch {
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;

    bool operator==(const Stretch&) const = default;
};

/// What of a text like `/proc/self/smaps` holds a file that cannot be written there and was not changed: programs,
/// libraries, fonts. Pure.
std::vector<Stretch> unchangedFiles(std::string_view smaps);

/// Gives back what is not in use: free memory, and the pages of unchanged files, which the system keeps at hand and
/// puts back when they are touched. For a moment after which most of the program will not run for long. Any thread.
void giveBack();

}  // namespace tolvane::linuxhost::OwnMemory
