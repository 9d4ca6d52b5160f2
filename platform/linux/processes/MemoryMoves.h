#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/files/FileDescriptor.h"
#include "platform/linux/processes/ProcFiles.h"

namespace tolvane::linuxhost {

/// Whether memory may have moved under processes that did not run: swapped out or in, or dropped by the kernel.
/// Kept descriptors of /proc/vmstat and /proc/pressure/memory; neither need exist.
class MemoryMoves {
public:
    explicit MemoryMoves(ProcFiles& files);

    /// Compares with the last call; the first one only takes the figures.
    bool sinceLastCall();

private:
    std::uint64_t pagesMoved();
    std::uint64_t stalls();

    ProcFiles& files_;
    FileDescriptor counters_;
    FileDescriptor pressure_;
    std::string text_;
    std::optional<std::uint64_t> lastPages_;
    std::optional<std::uint64_t> lastStalls_;
};

/// The sum of the counters in /proc/vmstat that move when anonymous memory leaves or comes back: "pswpin 0" and its
/// neighbours. Taking back file pages is not among them where the kernel counts it apart: no process's own memory
/// changes by it, and a large copy would keep them moving.
std::uint64_t anonymousMoves(std::string_view vmstat);

/// Microseconds for which some process waited for memory since boot, from
/// "some avg10=0.00 avg60=0.00 avg300=0.00 total=0"; 0 when the text is something else.
std::uint64_t stallTotal(std::string_view pressure);

}  // namespace tolvane::linuxhost
