#include "platform/macos/kernel/MacMachineStatistics.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <utility>

#include "platform/macos/kernel/KernelNumbers.h"
#include "platform/macos/kernel/PortRight.h"

namespace tolvane::machost {

namespace {

/// One named value; nullopt when the kernel does not know the name, or holds it in another size.
template <typename Type>
std::optional<Type> systemValue(const KernelCalls& kernel, const char* name) {
    Type value{};
    std::size_t size = sizeof value;
    if (kernel.systemValueByName(name, &value, &size) != 0 || size != sizeof value) return std::nullopt;
    return value;
}

CPUTicks ticksOf(const CoreTicks& ticks) {
    return {.user = ticks[0], .system = ticks[1], .idle = ticks[2], .nice = ticks[3]};
}

/// Memory that the kernel mapped into this process for an answer.
class LentBlock {
public:
    LentBlock(const KernelCalls& kernel, std::span<const std::uint32_t> words) : kernel_(kernel), words_(words) {}
    LentBlock(const LentBlock&) = delete;
    LentBlock& operator=(const LentBlock&) = delete;
    ~LentBlock() { kernel_.giveBackBlock(kernel_.ownTask(), words_.data(), words_.size_bytes()); }

    /// As many cores as were announced and are in the block.
    std::vector<CPUTicks> cores(std::size_t announced) const {
        const std::size_t count = std::min(announced, words_.size() / CoreTicks{}.size());
        std::vector<CPUTicks> ticks;
        ticks.reserve(count);
        for (std::size_t core = 0; core < count; ++core) {
            CoreTicks each{};
            std::memcpy(each.data(), words_.data() + core * each.size(), sizeof each);
            ticks.push_back(ticksOf(each));
        }
        return ticks;
    }

private:
    const KernelCalls& kernel_;
    std::span<const std::uint32_t> words_;
};

}  // namespace

MacMachineStatistics::MacMachineStatistics(Kernel kernel) : kernel_(std::move(kernel)) {}

std::optional<std::uint64_t> MacMachineStatistics::memorySize() const {
    return systemValue<std::uint64_t>(*kernel_, "hw.memsize");
}

std::optional<int> MacMachineStatistics::pressureLevel() const {
    return systemValue<std::int32_t>(*kernel_, "kern.memorystatus_vm_pressure_level");
}

std::optional<SwapUsage> MacMachineStatistics::swapUsage() const {
    const auto space = systemValue<SwapSpace>(*kernel_, "vm.swapusage");
    if (!space) return std::nullopt;
    return SwapUsage{.total = space->total, .used = space->used};
}

std::optional<VirtualMemoryCounters> MacMachineStatistics::virtualMemory() const {
    const PortRight machine(*kernel_, kernel_->machine());
    MachineMemory memory;
    std::uint32_t words = machineMemoryWords;
    if (kernel_->hostStatistics64(machine.get(), machineMemoryFlavour, &memory, &words) != 0) return std::nullopt;
    if (words < machineMemoryWordsRead) return std::nullopt;
    return VirtualMemoryCounters{.internalPages = memory.internal,
                                 .purgeablePages = memory.purgeable,
                                 .wiredPages = memory.wired,
                                 .compressorPages = memory.compressor,
                                 .uncompressedPagesInCompressor = memory.uncompressedInCompressor,
                                 .swapIns = memory.swapIns};
}

std::uint64_t MacMachineStatistics::pageSize() const {
    return static_cast<std::uint64_t>(std::max(0, kernel_->pageSize()));
}

std::optional<std::vector<CPUTicks>> MacMachineStatistics::ticksPerCore() const {
    const PortRight machine(*kernel_, kernel_->machine());
    std::uint32_t cores = 0;
    const std::uint32_t* words = nullptr;
    std::uint32_t count = 0;
    const int result = kernel_->coreStatistics(machine.get(), coreLoadFlavour, &cores, &words, &count);
    if (result != 0 || words == nullptr) return std::nullopt;
    return LentBlock(*kernel_, {words, count}).cores(cores);
}

int MacMachineStatistics::activeCores() const { return kernel_->activeCores(); }

std::optional<int> MacMachineStatistics::efficiencyCores() const {
    const auto cores = systemValue<std::int32_t>(*kernel_, "hw.perflevel1.logicalcpu");
    if (!cores || *cores < 1) return std::nullopt;
    return cores;
}

}  // namespace tolvane::machost
