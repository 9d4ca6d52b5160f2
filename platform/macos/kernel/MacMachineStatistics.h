#pragma once

#include "platform/MachineStatistics.h"
#include "platform/macos/kernel/KernelCalls.h"

namespace tolvane::machost {

/// The kernel's own counters, read afresh each time.
class MacMachineStatistics : public MachineStatistics {
public:
    explicit MacMachineStatistics(Kernel kernel);

    std::optional<std::uint64_t> memorySize() const override;
    std::optional<int> pressureLevel() const override;
    std::optional<SwapUsage> swapUsage() const override;
    std::optional<VirtualMemoryCounters> virtualMemory() const override;
    std::uint64_t pageSize() const override;
    std::optional<std::vector<CPUTicks>> ticksPerCore() const override;
    int activeCores() const override;
    std::optional<int> efficiencyCores() const override;

private:
    Kernel kernel_;
};

}  // namespace tolvane::machost
