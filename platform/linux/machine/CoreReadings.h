#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

#include "platform/MachineStatistics.h"

namespace tolvane::linuxhost {

/// The ticks of one core, with the kernel's number for it.
struct CoreTicks {
    int core = 0;
    CPUTicks ticks;

    bool operator==(const CoreTicks&) const = default;
};

struct MachineTicks {
    CPUTicks total;
    /// Cores that take work, in the kernel's order.
    std::vector<CoreTicks> cores;

    bool operator==(const MachineTicks&) const = default;
};

/// The lines "cpu  22233 2455 8322 364920 1254 0 172 25 0 0" (all cores) and "cpu0 …" at the start of /proc/stat: user,
/// nice, system, idle, waiting for a disk, interrupts, soft interrupts, stolen, and guests, which user already
/// includes. Waiting counts as idle, interrupts as system, and stolen time (what the hypervisor gave to others) not at
/// all.
std::optional<MachineTicks> parseTicks(std::string_view stat);

/// The kernel sometimes takes back ticks of idling and waiting that it had assigned too early. Our counters wrap, so
/// one tick less would read as eight months more, and a busy core as an idle one. A counter that steps back is
/// therefore held until it reaches its old value. Any thread.
class SteadyTicks {
public:
    void settle(std::vector<CoreTicks>& cores);

private:
    std::mutex mutex_;
    std::map<int, CPUTicks> latest_;
};

/// The numbers of "0-3,8,10-11".
std::set<int> parseCoreList(std::string_view text);

/// Ticks with the efficiency cores first, each kind in the kernel's order.
std::vector<CPUTicks> efficiencyFirst(const std::vector<CoreTicks>& cores, const std::set<int>& efficiency);

/// A core and its speed on the kernel's scale (1,024 for the fastest).
struct CoreCapacity {
    int core = 0;
    unsigned capacity = 0;
};

/// The cores that are slower than the fastest; empty where all are alike.
std::set<int> weakerCores(const std::vector<CoreCapacity>& capacities);

}  // namespace tolvane::linuxhost
