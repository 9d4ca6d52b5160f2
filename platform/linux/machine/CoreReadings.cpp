#include "platform/linux/machine/CoreReadings.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "platform/linux/text/KernelText.h"
#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

enum Column : std::size_t { user, nice, system, idle, waiting, interrupts, softInterrupts, columnCount };

/// More cores than any kernel supports, so that a broken file cannot fill memory.
constexpr int maximumCores = 8192;

CPUTicks ticksOf(std::string_view line) {
    std::array<std::uint64_t, columnCount> columns{};
    for (auto& column : columns) column = wholeNumber<std::uint64_t>(Scan::word(line)).value_or(0);
    const auto wrapped = [](std::uint64_t ticks) { return static_cast<std::uint32_t>(ticks); };
    return {.user = wrapped(columns[user]),
            .system = wrapped(columns[system] + columns[interrupts] + columns[softInterrupts]),
            .idle = wrapped(columns[idle] + columns[waiting]),
            .nice = wrapped(columns[nice])};
}

void insertRange(std::set<int>& cores, std::string_view range) {
    const auto dash = range.find('-');
    const auto first = wholeNumber<int>(range.substr(0, dash));
    const auto last = dash == std::string_view::npos ? first : wholeNumber<int>(range.substr(dash + 1));
    if (!first || !last || *first < 0 || *last >= maximumCores) return;
    for (int core = *first; core <= *last; ++core) cores.insert(core);
}

/// One hour at the usual hundred ticks a second. A counter that steps back further was reset, as when a core was
/// switched off.
constexpr std::int32_t furthestBack = 360'000;

std::uint32_t steady(std::uint32_t before, std::uint32_t now) {
    const auto step = static_cast<std::int32_t>(now - before);
    return step < 0 && step > -furthestBack ? before : now;
}

}  // namespace

void SteadyTicks::settle(std::vector<CoreTicks>& cores) {
    const std::lock_guard lock(mutex_);
    for (auto& [core, ticks] : cores) {
        auto& before = latest_.try_emplace(core, ticks).first->second;
        ticks = {.user = steady(before.user, ticks.user),
                 .system = steady(before.system, ticks.system),
                 .idle = steady(before.idle, ticks.idle),
                 .nice = steady(before.nice, ticks.nice)};
        before = ticks;
    }
}

std::optional<MachineTicks> parseTicks(std::string_view stat) {
    constexpr std::string_view prefix = "cpu";
    MachineTicks machine;
    bool hasTotal = false;
    for (auto line = Scan::take(stat, '\n'); line.starts_with(prefix); line = Scan::take(stat, '\n')) {
        const auto name = Scan::word(line);
        if (name == prefix) {
            machine.total = ticksOf(line);
            hasTotal = true;
        } else if (const auto core = wholeNumber<int>(name.substr(prefix.size()))) {
            machine.cores.push_back({.core = *core, .ticks = ticksOf(line)});
        }
    }
    if (!hasTotal) return std::nullopt;
    return machine;
}

std::set<int> parseCoreList(std::string_view text) {
    std::set<int> cores;
    text = withoutLineEnd(text);
    while (!text.empty()) {
        const auto end = text.find(',');
        insertRange(cores, text.substr(0, end));
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    }
    return cores;
}

std::vector<CPUTicks> efficiencyFirst(const std::vector<CoreTicks>& cores, const std::set<int>& efficiency) {
    std::vector<CPUTicks> ordered;
    ordered.reserve(cores.size());
    for (const bool wanted : {true, false}) {
        for (const CoreTicks& core : cores) {
            if (efficiency.contains(core.core) == wanted) ordered.push_back(core.ticks);
        }
    }
    return ordered;
}

std::set<int> weakerCores(const std::vector<CoreCapacity>& capacities) {
    const auto best = std::ranges::max_element(capacities, {}, &CoreCapacity::capacity);
    std::set<int> weaker;
    for (const CoreCapacity& core : capacities) {
        if (core.capacity < best->capacity) weaker.insert(core.core);
    }
    return weaker;
}

}  // namespace tolvane::linuxhost
