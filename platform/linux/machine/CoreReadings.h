#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

#include "platform/MachineStatistics.h"

namespace tolvane::linuxhost {

/// The ticks of one core, under the kernel's number for it.
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
/// nice, system, idle, waiting for a disk, interrupts, soft interrupts, stolen, and guests, which user has already.
/// Waiting is idle, interrupts are system, and what the hypervisor gave to others counts nowhere.
std::optional<MachineTicks> parseTicks(std::string_view stat);

/// The kernel takes ticks of idleness and of waiting back now and then, having told them apart too early. Counters that
/// wrap have no way to say so: a tick less reads as eight months more, and a busy core as an idle one. So a counter
/// that steps back stands still until it is where it was. Any thread.
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

/// A core and how much work it does in a time, on the kernel's scale (1,024 for the best).
struct CoreCapacity {
    int core = 0;
    unsigned capacity = 0;
};

/// The cores that do less than the best. None of them where all are alike.
std::set<int> weakerCores(const std::vector<CoreCapacity>& capacities);

}  // namespace tolvane::linuxhost
