#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/files/FileDescriptor.h"
#include "platform/linux/processes/ProcFiles.h"

namespace tolvane::linuxhost {

/// Whether memory of processes that did not run may have changed: swapped out or in, or dropped by the kernel.
/// Keeps descriptors of /proc/vmstat and /proc/pressure/memory; neither file need exist.
class MemoryMoves {
public:
    explicit MemoryMoves(ProcFiles& files);

    /// Compares with the last call; the first call only takes the numbers.
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

/// The sum of the counters in /proc/vmstat that change when anonymous memory leaves or returns: "pswpin 0" and its
/// neighbours. Reclaimed file pages are left out where the kernel counts them apart: they change no process's own
/// memory, and a large copy would keep the sum moving.
std::uint64_t anonymousMoves(std::string_view vmstat);

/// Microseconds for which some process waited for memory since boot, from
/// "some avg10=0.00 avg60=0.00 avg300=0.00 total=0"; 0 for any other text.
std::uint64_t stallTotal(std::string_view pressure);

}  // namespace tolvane::linuxhost
