#include "core/sampling/SystemMemory.h"

#include <algorithm>

namespace tolvane {

namespace {

void takeCounters(SystemMemory& memory, const VirtualMemoryCounters& counters, std::uint64_t page) {
    // The counters are not read at one instant, so the part may come out larger than the whole.
    memory.app = (counters.internalPages - std::min(counters.purgeablePages, counters.internalPages)) * page;
    memory.wired = counters.wiredPages * page;
    memory.compressed = counters.compressorPages * page;
    memory.swapIns = counters.swapIns * page;
    memory.compressionRatio = SystemMemory::ratioOf(counters.uncompressedPagesInCompressor, counters.compressorPages);
}

}  // namespace

SystemMemory SystemMemory::read(const MachineStatistics& machine) {
    SystemMemory memory;
    memory.total = machine.memorySize().value_or(0);
    if (const auto counters = machine.virtualMemory()) takeCounters(memory, *counters, machine.pageSize());
    const auto swap = machine.swapUsage().value_or(SwapUsage{});
    memory.swapUsed = swap.used;
    memory.swapTotal = swap.total;
    memory.pressure = pressureFromLevel(machine.pressureLevel().value_or(0)).value_or(Pressure::normal);
    return memory;
}

double SystemMemory::ratioOf(std::uint64_t uncompressedPages, std::uint64_t compressorPages) {
    if (compressorPages == 0) return 1.0;
    return std::max(1.0, static_cast<double>(uncompressedPages) / static_cast<double>(compressorPages));
}

}  // namespace tolvane
