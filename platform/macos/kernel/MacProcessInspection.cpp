#include "platform/macos/kernel/MacProcessInspection.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/macos/kernel/KernelNumbers.h"
#include "platform/macos/kernel/ListeningPorts.h"
#include "platform/macos/kernel/PortRight.h"
#include "platform/macos/kernel/ProcStrings.h"
#include "platform/macos/kernel/ProcessFacts.h"

namespace tolvane::machost {

namespace {

/// Room for processes that start between the count and the list.
constexpr int spareRoom = 64;
/// The longest path that the kernel returns.
constexpr std::size_t pathRoom = 4096;

double nanosPerTickOf(Timebase base) {
    // Dividing by zero would make every time infinite; Intel machines report one nanosecond a tick.
    if (base.denominator == 0) return 1;
    return static_cast<double>(base.numerator) / static_cast<double>(base.denominator);
}

template <std::size_t size>
std::string_view viewOf(const std::array<char, size>& bytes) {
    return {bytes.data(), bytes.size()};
}

std::uint64_t mixed(std::uint64_t hash, std::string_view bytes) {
    // FNV-1a.
    for (const char byte : bytes) hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
    return hash;
}

std::uint64_t programStamp(const BSDInfo& info) {
    return mixed(mixed(0xCBF29CE484222325U, viewOf(info.command)), viewOf(info.name));
}

}  // namespace

MacProcessInspection::MacProcessInspection(Kernel kernel)
    : kernel_(std::move(kernel)), nanosPerTick_(nanosPerTickOf(kernel_->timebase())) {}

std::vector<Pid> MacProcessInspection::allPids() {
    const int count = kernel_->listAllPids(nullptr, 0);
    if (count < 1) return {};
    std::vector<Pid> pids(static_cast<std::size_t>(count) + spareRoom);
    const int listed = kernel_->listAllPids(pids.data(), static_cast<int>(pids.size() * sizeof(Pid)));
    if (listed < 1) return {};
    pids.resize(std::min(pids.size(), static_cast<std::size_t>(listed)));
    return pids;
}

std::optional<BSDRecord> MacProcessInspection::bsdRecord(Pid pid) {
    const auto info = readBSDInfo(*kernel_, pid);
    if (!info) return std::nullopt;
    return BSDRecord{.ppid = static_cast<Pid>(info->ppid),
                     .uid = info->uid,
                     .name = textOf(viewOf(info->name)),
                     .startTime = startTimeOf(*info),
                     .programStamp = programStamp(*info)};
}

std::optional<UsageRecord> MacProcessInspection::usage(Pid pid) {
    ResourceUsage usage;
    if (kernel_->resourceUsage(pid, resourceUsageVersion, &usage) != 0) return std::nullopt;
    return UsageRecord{.userTime = usage.userTime,
                       .systemTime = usage.systemTime,
                       .performanceUserTime = usage.performanceUserTime,
                       .performanceSystemTime = usage.performanceSystemTime,
                       .footprint = usage.physicalFootprint,
                       .peakFootprint = usage.lifetimeMaximumFootprint};
}

std::optional<Text> MacProcessInspection::executablePath(Pid pid) {
    std::array<char, pathRoom> path{};
    if (kernel_->pidPath(pid, path.data(), path.size()) < 1) return std::nullopt;
    return textOf(viewOf(path));
}

std::optional<TextList> MacProcessInspection::arguments(Pid pid) {
    const auto block = readArgumentsBlock(*kernel_, pid);
    return block ? std::optional(parseProcArgs(*block)) : std::nullopt;
}

std::optional<std::vector<std::string>> MacProcessInspection::environment(Pid pid) {
    const auto block = readArgumentsBlock(*kernel_, pid);
    return block ? std::optional(parseProcEnv(*block)) : std::nullopt;
}

std::optional<MemoryRecord> MacProcessInspection::memoryRecord(Pid pid) {
    Port name = 0;
    const bool failed = kernel_->taskName(kernel_->ownTask(), pid, &name) != 0;
    const PortRight task(*kernel_, name);
    if (failed || !task) return std::nullopt;
    TaskMemory memory;
    std::uint32_t words = taskMemoryWords;
    if (kernel_->taskInfo(task.get(), taskMemoryFlavour, &memory, &words) != 0) return std::nullopt;
    return MemoryRecord{.compressed = memory.compressed, .swapIns = memory.ledgerSwapIns};
}

std::optional<Text> MacProcessInspection::workingDirectory(Pid pid) {
    VnodePathInfo paths;
    constexpr int size = sizeof paths;
    if (kernel_->pidInfo(pid, vnodePaths, 0, &paths, size) != size) return std::nullopt;
    auto folder = textOf(viewOf(paths.folderPath));
    if (folder.empty()) return std::nullopt;
    return folder;
}

std::vector<int> MacProcessInspection::listeningPorts(Pid pid) { return readListeningPorts(*kernel_, pid); }

}  // namespace tolvane::machost
