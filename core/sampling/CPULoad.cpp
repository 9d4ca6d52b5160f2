#include "core/sampling/CPULoad.h"

#include <algorithm>

namespace tolvane {

namespace {

struct BusyFractions {
    double user = 0;
    double system = 0;
};

/// The counters wrap at 32 bits and so do these differences, so a counter that wrapped still gives the right one.
BusyFractions busyBetween(const CPUTicks& from, const CPUTicks& to) {
    const std::uint32_t user = (to.user + to.nice) - (from.user + from.nice);
    const std::uint32_t system = to.system - from.system;
    const std::uint32_t idle = to.idle - from.idle;
    const auto total = static_cast<double>(std::uint64_t{user} + system + idle);
    if (total <= 0) return {};
    return {.user = user / total, .system = system / total};
}

CPUTicks sumOf(const std::vector<CPUTicks>& cores) {
    CPUTicks sum;
    for (const auto& core : cores) {
        sum.user += core.user;
        sum.system += core.system;
        sum.idle += core.idle;
        sum.nice += core.nice;
    }
    return sum;
}

}  // namespace

CoreLayout CoreLayout::read(const MachineStatistics& machine) {
    const int active = machine.activeCores();
    const int efficiency = std::max(0, machine.efficiencyCores().value_or(0));
    return {.performance = active - efficiency, .efficiency = efficiency};
}

CPULoad CPULoad::between(const std::vector<CPUTicks>& from, const std::vector<CPUTicks>& to, const CoreLayout& layout) {
    auto load = between(sumOf(from), sumOf(to), static_cast<int>(to.size()));
    load.efficiencyCores = layout.efficiency;
    const auto efficiency = static_cast<std::size_t>(std::max(0, layout.efficiency));
    for (std::size_t core = 0; core < std::min(from.size(), to.size()); ++core) {
        const auto busy = busyBetween(from[core], to[core]);
        (core < efficiency ? load.efficiency : load.performance) += busy.user + busy.system;
    }
    return load;
}

CPULoad CPULoad::between(const CPUTicks& from, const CPUTicks& to, int cores) {
    const auto busy = busyBetween(from, to);
    return {.user = busy.user, .system = busy.system, .cores = cores};
}

}  // namespace tolvane
