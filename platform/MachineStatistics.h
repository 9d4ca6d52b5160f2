#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace tolvane {

/// Scheduler ticks since boot, of one core or of all. They wrap at 32 bits.
struct CPUTicks {
    std::uint32_t user = 0;
    std::uint32_t system = 0;
    std::uint32_t idle = 0;
    std::uint32_t nice = 0;

    bool operator==(const CPUTicks&) const = default;
};

/// Bytes.
struct SwapUsage {
    std::uint64_t total = 0;
    std::uint64_t used = 0;

    bool operator==(const SwapUsage&) const = default;
};

/// The kernel's counters of memory, in pages of `MachineStatistics::pageSize`.
struct VirtualMemoryCounters {
    /// Anonymous memory, including what can be dropped at any time.
    std::uint64_t internalPages = 0;
    /// The part of it that can be dropped at any time.
    std::uint64_t purgeablePages = 0;
    /// Held by the kernel and not movable.
    std::uint64_t wiredPages = 0;
    /// Memory the compressor occupies.
    std::uint64_t compressorPages = 0;
    /// What the compressor holds, at its uncompressed size.
    std::uint64_t uncompressedPagesInCompressor = 0;
    /// Running total since boot of pages read back from swap.
    std::uint64_t swapIns = 0;

    bool operator==(const VirtualMemoryCounters&) const = default;
};

/// Facts about the whole machine. Stateless for its caller and callable from any thread.
/// A fact that cannot be read is nullopt.
class MachineStatistics {
public:
    virtual ~MachineStatistics() = default;

    /// Bytes of physical memory.
    virtual std::optional<std::uint64_t> memorySize() const = 0;
    /// 1 normal, 2 warning, 4 critical.
    virtual std::optional<int> pressureLevel() const = 0;
    virtual std::optional<SwapUsage> swapUsage() const = 0;
    virtual std::optional<VirtualMemoryCounters> virtualMemory() const = 0;
    /// Bytes per page.
    virtual std::uint64_t pageSize() const = 0;
    /// One per core; the efficiency cores come first.
    virtual std::optional<std::vector<CPUTicks>> ticksPerCore() const = 0;
    /// Logical cores that take work now.
    virtual int activeCores() const = 0;
    /// Logical efficiency cores; nullopt where all cores are alike.
    virtual std::optional<int> efficiencyCores() const = 0;
};

}  // namespace tolvane
