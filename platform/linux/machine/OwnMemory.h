#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

/// This program's memory as the kernel counts it.
namespace tolvane::linuxhost::OwnMemory {

/// A range of addresses.
struct Stretch {
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;

    bool operator==(const Stretch&) const = default;
};

/// The mappings in a text like `/proc/self/smaps` that hold read-only, unchanged files: programs, libraries, fonts.
/// Pure.
std::vector<Stretch> unchangedFiles(std::string_view smaps);

/// Returns unused memory to the system: free heap memory, and the pages of unchanged files, which stay in the page
/// cache and come back when touched. Call it when most of the program will not run for a while. Any thread.
void giveBack();

}  // namespace tolvane::linuxhost::OwnMemory
