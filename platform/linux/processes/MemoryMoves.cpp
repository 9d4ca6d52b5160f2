#include "platform/linux/processes/MemoryMoves.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

constexpr std::array<std::string_view, 6> anonymousCounters = {"pswpin",  "pswpout",     "zswpin",
                                                               "zswpout", "pglazyfreed", "pgsteal_anon"};

bool isCounted(std::string_view name) { return std::ranges::find(anonymousCounters, name) != anonymousCounters.end(); }

}  // namespace

std::uint64_t anonymousMoves(std::string_view vmstat) {
    std::uint64_t sum = 0;
    std::uint64_t taken = 0;
    bool toldApart = false;
    while (!vmstat.empty()) {
        auto line = Scan::take(vmstat, '\n');
        if (!line.starts_with('p') && !line.starts_with('z')) continue;
        const auto name = Scan::take(line, ' ');
        const auto value = Scan::figure(line).value_or(0);
        if (isCounted(name)) sum += value;
        if (name.starts_with("pgsteal_")) taken += value;
        if (name == "pgsteal_anon") toldApart = true;
    }
    return toldApart ? sum : sum + taken;
}

std::uint64_t stallTotal(std::string_view pressure) {
    constexpr std::string_view key = "total=";
    const auto line = Scan::take(pressure, '\n');
    const auto found = line.find(key);
    if (!line.starts_with("some ") || found == std::string_view::npos) return 0;
    return Scan::figure(line.substr(found + key.size())).value_or(0);
}

MemoryMoves::MemoryMoves(ProcFiles& files)
    : files_(files), counters_(files.open("vmstat")), pressure_(files.open("pressure/memory")) {}

bool MemoryMoves::sinceLastCall() {
    const auto pages = pagesMoved();
    const auto waits = stalls();
    const auto lastPages = std::exchange(lastPages_, pages);
    const auto lastStalls = std::exchange(lastStalls_, waits);
    return (lastPages && *lastPages != pages) || (lastStalls && *lastStalls != waits);
}

std::uint64_t MemoryMoves::pagesMoved() {
    files_.readAgainWhole(counters_, text_);
    return anonymousMoves(text_);
}

std::uint64_t MemoryMoves::stalls() { return stallTotal(files_.readAgain(pressure_).value_or(std::string_view{})); }

}  // namespace tolvane::linuxhost
