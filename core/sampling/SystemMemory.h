#pragma once

#include <compare>
#include <cstdint>
#include <optional>

#include "platform/MachineStatistics.h"

namespace tolvane {

/// How tight memory is, in the kernel's own numbers and ordered by them.
enum class Pressure : int { normal = 1, warning = 2, critical = 4 };

/// Returns nullopt for a number that is not a level.
constexpr std::optional<Pressure> pressureFromLevel(int level) {
    switch (level) {
        case 1:
            return Pressure::normal;
        case 2:
            return Pressure::warning;
        case 4:
            return Pressure::critical;
        default:
            return std::nullopt;
    }
}

/// How the machine's memory is used. All sizes in bytes.
struct SystemMemory {
    /// Physical memory.
    std::uint64_t total = 0;
    /// Anonymous memory that cannot simply be dropped: what processes really hold.
    std::uint64_t app = 0;
    std::uint64_t wired = 0;
    /// What the compressor occupies.
    std::uint64_t compressed = 0;
    std::uint64_t swapUsed = 0;
    std::uint64_t swapTotal = 0;
    /// Running total of memory read back from swap since boot.
    std::uint64_t swapIns = 0;
    Pressure pressure = Pressure::normal;
    /// Bytes held per byte of compressor, never below 1.
    double compressionRatio = 1.0;

    bool operator==(const SystemMemory&) const = default;

    std::uint64_t used() const { return app + wired + compressed; }

    /// Never fails: a value that cannot be read keeps its default.
    static SystemMemory read(const MachineStatistics& machine);
    /// Returns 1 when there are no compressor pages.
    static double ratioOf(std::uint64_t uncompressedPages, std::uint64_t compressorPages);
};

}  // namespace tolvane
