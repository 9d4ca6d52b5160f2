#pragma once

#include <set>
#include <string>

#include "platform/MachineStatistics.h"
#include "platform/linux/machine/CoreReadings.h"
#include "platform/linux/machine/KernelFile.h"
#include "platform/linux/machine/MemoryReadings.h"

namespace tolvane::linuxhost {

/// The roots of the kernel's file systems.
struct KernelRoots {
    std::string proc = "/proc";
    std::string sys = "/sys";
};

/// Facts about the machine from /proc and /sys. Keeps its files open; the classes of cores are read once.
///
/// Facts without an exact equivalent on Linux: there is no purgeable memory. `wired` is what remains of the total after
/// everything else is subtracted, so that the parts add up. The compressor is the zram that serves as swap plus zswap's
/// pool; memory swapped to a disk does not count in it.
class LinuxMachineStatistics : public MachineStatistics {
public:
    explicit LinuxMachineStatistics(const KernelRoots& roots = {});

    std::optional<std::uint64_t> memorySize() const override;
    /// From stall and available memory together (`PressureThresholds`); nullopt on a kernel that does not measure
    /// stall.
    std::optional<int> pressureLevel() const override;
    std::optional<SwapUsage> swapUsage() const override;
    std::optional<VirtualMemoryCounters> virtualMemory() const override;
    std::uint64_t pageSize() const override { return pageSize_; }
    std::optional<std::vector<CPUTicks>> ticksPerCore() const override;
    int activeCores() const override;
    std::optional<int> efficiencyCores() const override;

private:
    std::optional<MemInfo> memInfo() const;
    CompressedMemory compressedMemory(const MemInfo& memory) const;
    CompressedMemory zram() const;
    CompressedMemory zswap(const MemInfo& memory) const;
    std::set<int> onlineCores() const;

    KernelRoots roots_;
    std::uint64_t pageSize_;
    KernelFile memInfo_;
    KernelFile vmStat_;
    KernelFile swaps_;
    KernelFile pressure_;
    KernelFile stat_;
    KernelFile online_;
    std::set<int> efficiency_;
    /// Mutable, since only the reading of ticks uses it.
    mutable SteadyTicks steady_;
};

}  // namespace tolvane::linuxhost
