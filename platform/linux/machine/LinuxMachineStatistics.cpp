#include "platform/linux/machine/LinuxMachineStatistics.h"

#include <unistd.h>

#include <algorithm>

#include "base/files/Files.h"
#include "platform/linux/machine/PressureReading.h"
#include "platform/linux/text/KernelText.h"

namespace tolvane::linuxhost {

namespace {

/// Files of /sys are one page at most.
constexpr std::size_t sysFileLimit = 65536;

std::optional<std::uint64_t> numberIn(const std::string& path) {
    const auto text = Files::readKernelFile(path, sysFileLimit);
    return text ? wholeNumber<std::uint64_t>(withoutLineEnd(*text)) : std::nullopt;
}

std::set<int> coresIn(const std::string& path) {
    return parseCoreList(Files::readKernelFile(path, sysFileLimit).value_or(""));
}

std::set<int> coresBelowTheBest(const std::string& sys) {
    const std::string folder = sys + "/devices/system/cpu/";
    std::vector<CoreCapacity> capacities;
    for (const int core : coresIn(folder + "possible")) {
        const auto capacity = numberIn(folder + "cpu" + std::to_string(core) + "/cpu_capacity");
        if (capacity) capacities.push_back({.core = core, .capacity = static_cast<unsigned>(*capacity)});
    }
    return weakerCores(capacities);
}

/// On hybrid x86 processors the kernel lists the efficiency cores; elsewhere it rates each core if they differ.
std::set<int> efficiencyCoresOf(const std::string& sys) {
    auto named = coresIn(sys + "/devices/cpu_atom/cpus");
    return named.empty() ? coresBelowTheBest(sys) : named;
}

/// Before Linux 5.19, zswap reported its size to root only, in debugfs.
CompressedMemory zswapFromDebugging(const std::string& sys, std::uint64_t pageSize) {
    const std::string folder = sys + "/kernel/debug/zswap/";
    const auto pool = numberIn(folder + "pool_total_size");
    const auto pages = numberIn(folder + "stored_pages");
    if (!pool || !pages) return {};
    return {.occupied = *pool, .uncompressed = *pages * pageSize};
}

}  // namespace

LinuxMachineStatistics::LinuxMachineStatistics(const KernelRoots& roots)
    : roots_(roots),
      pageSize_(static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE))),
      memInfo_(roots.proc + "/meminfo"),
      vmStat_(roots.proc + "/vmstat"),
      swaps_(roots.proc + "/swaps"),
      pressure_(roots.proc + "/pressure/memory"),
      stat_(roots.proc + "/stat"),
      online_(roots.sys + "/devices/system/cpu/online"),
      efficiency_(efficiencyCoresOf(roots.sys)) {}

std::optional<MemInfo> LinuxMachineStatistics::memInfo() const {
    const auto text = memInfo_.read();
    return text ? parseMemInfo(*text) : std::nullopt;
}

std::optional<std::uint64_t> LinuxMachineStatistics::memorySize() const {
    const auto memory = memInfo();
    if (!memory) return std::nullopt;
    return memory->total;
}

std::optional<int> LinuxMachineStatistics::pressureLevel() const {
    const auto text = pressure_.read();
    const auto averages = text ? parsePressure(*text) : std::nullopt;
    const auto memory = memInfo();
    if (!averages || !memory) return std::nullopt;
    return linuxhost::pressureLevel(*averages, *memory);
}

std::optional<SwapUsage> LinuxMachineStatistics::swapUsage() const {
    const auto memory = memInfo();
    if (!memory) return std::nullopt;
    return SwapUsage{.total = memory->swapTotal,
                     .used = memory->swapTotal - std::min(memory->swapFree, memory->swapTotal)};
}

CompressedMemory LinuxMachineStatistics::zram() const {
    CompressedMemory sum;
    for (const std::string& device : zramDevices(swaps_.read().value_or(""))) {
        const auto text = Files::readKernelFile(roots_.sys + "/block/" + device + "/mm_stat", sysFileLimit);
        if (const auto use = text ? parseZram(*text) : std::nullopt) sum += *use;
    }
    return sum;
}

CompressedMemory LinuxMachineStatistics::zswap(const MemInfo& memory) const {
    if (!memory.zswap || !memory.zswapped) return zswapFromDebugging(roots_.sys, pageSize_);
    return {.occupied = *memory.zswap, .uncompressed = *memory.zswapped};
}

CompressedMemory LinuxMachineStatistics::compressedMemory(const MemInfo& memory) const {
    if (memory.swapTotal == 0) return {};
    CompressedMemory sum = zram();
    sum += zswap(memory);
    return sum;
}

std::optional<VirtualMemoryCounters> LinuxMachineStatistics::virtualMemory() const {
    const auto memory = memInfo();
    if (!memory) return std::nullopt;
    const auto pagesSwappedIn = parsePagesSwappedIn(vmStat_.read().value_or(""));
    return shareOut(*memory, compressedMemory(*memory), pagesSwappedIn.value_or(0), pageSize_);
}

std::optional<std::vector<CPUTicks>> LinuxMachineStatistics::ticksPerCore() const {
    const auto text = stat_.read();
    auto ticks = text ? parseTicks(*text) : std::nullopt;
    if (!ticks) return std::nullopt;
    steady_.settle(ticks->cores);
    return efficiencyFirst(ticks->cores, efficiency_);
}

std::set<int> LinuxMachineStatistics::onlineCores() const { return parseCoreList(online_.read().value_or("")); }

int LinuxMachineStatistics::activeCores() const {
    const auto online = onlineCores();
    if (!online.empty()) return static_cast<int>(online.size());
    return static_cast<int>(std::max(1L, ::sysconf(_SC_NPROCESSORS_ONLN)));
}

std::optional<int> LinuxMachineStatistics::efficiencyCores() const {
    const auto online = onlineCores();
    const auto count = std::ranges::count_if(efficiency_, [&](int core) { return online.contains(core); });
    // If all cores are efficiency cores, they are alike.
    if (count == 0 || static_cast<std::size_t>(count) == online.size()) return std::nullopt;
    return static_cast<int>(count);
}

}  // namespace tolvane::linuxhost
