#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/MachineStatistics.h"

namespace tolvane::linuxhost {

/// /proc/meminfo, in bytes. Lines that a kernel lacks are 0, except where 0 would mislead.
struct MemInfo {
    std::uint64_t total = 0;
    std::uint64_t free = 0;
    /// Available to new programs without swapping.
    std::uint64_t available = 0;
    std::uint64_t buffers = 0;
    /// The page cache, including shared memory.
    std::uint64_t cached = 0;
    std::uint64_t anonymous = 0;
    /// Shared memory and files of tmpfs.
    std::uint64_t shared = 0;
    std::uint64_t reclaimableSlab = 0;
    std::uint64_t swapTotal = 0;
    std::uint64_t swapFree = 0;
    /// What zswap's pool occupies, and what it holds uncompressed; nullopt before Linux 5.19.
    std::optional<std::uint64_t> zswap = std::nullopt;
    std::optional<std::uint64_t> zswapped = std::nullopt;

    bool operator==(const MemInfo&) const = default;
};

/// Parses lines such as "MemTotal:       24684096 kB"; nullopt without that one.
std::optional<MemInfo> parseMemInfo(std::string_view text);

/// The line "pswpin 60112" of /proc/vmstat: pages read back from swap since boot.
std::optional<std::uint64_t> parsePagesSwappedIn(std::string_view vmstat);

/// The zram devices in /proc/swaps: "zram0" from
/// "/dev/zram0                              partition	8388604		1048576		100".
std::vector<std::string> zramDevices(std::string_view swaps);

/// Memory that holds other memory compressed, in bytes.
struct CompressedMemory {
    std::uint64_t occupied = 0;
    std::uint64_t uncompressed = 0;

    bool operator==(const CompressedMemory&) const = default;
    CompressedMemory& operator+=(const CompressedMemory& other) {
        occupied += other.occupied;
        uncompressed += other.uncompressed;
        return *this;
    }
};

/// A device's mm_stat, "105906176 1487034 2871296 0 2871296 3 0 0 0": data before compression, after it, and the
/// memory used, which includes the gaps of the pool.
std::optional<CompressedMemory> parseZram(std::string_view mmStat);

/// Divides physical memory so that the parts add up to the total: free, page cache without shared memory,
/// reclaimable slab, internal (anonymous and shared), compressor, and wired as all the rest.
/// Linux has no purgeable memory.
VirtualMemoryCounters shareOut(const MemInfo& memory, const CompressedMemory& compressor, std::uint64_t pagesSwappedIn,
                               std::uint64_t pageSize);

}  // namespace tolvane::linuxhost
