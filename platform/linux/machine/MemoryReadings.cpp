#include "platform/linux/machine/MemoryReadings.h"

#include <array>

#include "platform/linux/text/KernelText.h"
#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

struct MemInfoLine {
    std::string_view key;
    std::uint64_t MemInfo::* field;
};

constexpr std::array memInfoLines = {
    MemInfoLine{"MemTotal:", &MemInfo::total},         MemInfoLine{"MemFree:", &MemInfo::free},
    MemInfoLine{"MemAvailable:", &MemInfo::available}, MemInfoLine{"Buffers:", &MemInfo::buffers},
    MemInfoLine{"Cached:", &MemInfo::cached},          MemInfoLine{"SwapTotal:", &MemInfo::swapTotal},
    MemInfoLine{"SwapFree:", &MemInfo::swapFree},      MemInfoLine{"AnonPages:", &MemInfo::anonymous},
    MemInfoLine{"Shmem:", &MemInfo::shared},           MemInfoLine{"SReclaimable:", &MemInfo::reclaimableSlab},
};

std::uint64_t minus(std::uint64_t from, std::uint64_t amount) { return from > amount ? from - amount : 0; }

void put(MemInfo& info, std::string_view key, std::uint64_t bytes) {
    if (key == "Zswap:") info.zswap = bytes;
    if (key == "Zswapped:") info.zswapped = bytes;
    for (const auto& line : memInfoLines) {
        if (line.key == key) info.*line.field = bytes;
    }
}

}  // namespace

std::optional<MemInfo> parseMemInfo(std::string_view text) {
    MemInfo info;
    while (!text.empty()) {
        auto line = Scan::take(text, '\n');
        const auto key = Scan::word(line);
        if (const auto kilobytes = wholeNumber<std::uint64_t>(Scan::word(line))) put(info, key, *kilobytes * 1024);
    }
    if (info.total == 0) return std::nullopt;
    return info;
}

std::optional<std::uint64_t> parsePagesSwappedIn(std::string_view vmstat) {
    while (!vmstat.empty()) {
        auto line = Scan::take(vmstat, '\n');
        if (Scan::word(line) == "pswpin") return wholeNumber<std::uint64_t>(Scan::word(line));
    }
    return std::nullopt;
}

std::vector<std::string> zramDevices(std::string_view swaps) {
    constexpr std::string_view folder = "/dev/";
    std::vector<std::string> devices;
    while (!swaps.empty()) {
        auto line = Scan::take(swaps, '\n');
        const auto file = Scan::word(line);
        if (file.starts_with("/dev/zram")) devices.emplace_back(file.substr(folder.size()));
    }
    return devices;
}

std::optional<CompressedMemory> parseZram(std::string_view mmStat) {
    auto line = withoutLineEnd(mmStat);
    const auto original = wholeNumber<std::uint64_t>(Scan::word(line));
    Scan::word(line);
    const auto used = wholeNumber<std::uint64_t>(Scan::word(line));
    if (!original || !used) return std::nullopt;
    return CompressedMemory{.occupied = *used, .uncompressed = *original};
}

VirtualMemoryCounters shareOut(const MemInfo& memory, const CompressedMemory& compressor, std::uint64_t pagesSwappedIn,
                               std::uint64_t pageSize) {
    const std::uint64_t pageCache = minus(memory.buffers + memory.cached, memory.shared);
    const std::uint64_t internal = memory.anonymous + memory.shared;
    const std::uint64_t named = memory.free + pageCache + memory.reclaimableSlab + internal + compressor.occupied;
    return {.internalPages = internal / pageSize,
            .purgeablePages = 0,
            .wiredPages = minus(memory.total, named) / pageSize,
            .compressorPages = compressor.occupied / pageSize,
            .uncompressedPagesInCompressor = compressor.uncompressed / pageSize,
            .swapIns = pagesSwappedIn};
}

}  // namespace tolvane::linuxhost
