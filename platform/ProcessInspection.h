#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Date.h"
#include "base/Pid.h"
#include "base/Text.h"

namespace tolvane {

/// What the kernel tells every user about a process.
struct BSDRecord {
    Pid ppid = 0;
    std::uint32_t uid = 0;
    /// Short name, invalid UTF-8 repaired; empty when the kernel has none.
    Text name;
    Date startTime;
    /// Moves when the process runs another program under the same pid and start time, or shows its arguments anew; 0
    /// where the host cannot tell.
    std::uint64_t programStamp = 0;

    bool operator==(const BSDRecord&) const = default;
};

/// What a process used, since it started and now. Times are ticks of `ProcessInspection::nanosPerTick`.
struct UsageRecord {
    std::uint64_t userTime = 0;
    std::uint64_t systemTime = 0;
    std::uint64_t performanceUserTime = 0;
    std::uint64_t performanceSystemTime = 0;
    /// Bytes.
    std::uint64_t footprint = 0;
    /// Bytes; the highest that the host knows of.
    std::uint64_t peakFootprint = 0;

    bool operator==(const UsageRecord&) const = default;
};

/// What of a process is not in plain memory, in bytes.
struct MemoryRecord {
    std::uint64_t compressed = 0;
    /// Running total of bytes read back from swap. Negative readings occur on some kernels and mean nothing.
    std::int64_t swapIns = 0;

    bool operator==(const MemoryRecord&) const = default;
};

/// Reads the host's processes, one fact group per call; it cannot act on them.
/// Confined to one thread at a time: a host may keep between calls what cannot have changed.
///
/// `allPids` begins a sweep. Within it `bsdRecord` comes first for a pid, and the other questions about that pid
/// follow before the next pid is asked for: a host may then read each of its files once. Asking `bsdRecord` again
/// without a new sweep reads the process afresh and in full.
///
/// A process that is gone or shielded gives nothing; nothing here throws.
class ProcessInspection {
public:
    virtual ~ProcessInspection() = default;

    /// Nanoseconds per tick of the times in `UsageRecord`.
    virtual double nanosPerTick() const = 0;
    /// In the kernel's order; empty when the list cannot be read.
    virtual std::vector<Pid> allPids() = 0;
    virtual std::optional<BSDRecord> bsdRecord(Pid pid) = 0;
    virtual std::optional<UsageRecord> usage(Pid pid) = 0;
    virtual std::optional<Text> executablePath(Pid pid) = 0;
    /// What the process was started with, the program's name first, as valid UTF-8.
    virtual std::optional<TextList> arguments(Pid pid) = 0;
    /// Entries NAME=value in the process's own order, none empty, as valid UTF-8. Large and seldom wanted: not for
    /// sweeps.
    virtual std::optional<std::vector<std::string>> environment(Pid pid) = 0;
    virtual std::optional<MemoryRecord> memoryRecord(Pid pid) = 0;
    virtual std::optional<Text> workingDirectory(Pid pid) = 0;
    /// Whether the program belongs to the system, where the host knows better than the executable's path tells.
    virtual std::optional<bool> belongsToSystem(Pid pid) = 0;
    /// TCP ports with a listening socket of this process; any order, repeats allowed.
    virtual std::vector<int> listeningPorts(Pid pid) = 0;
    /// The same of several processes, each under its pid. Hosts that read tables of the whole machine for it read them
    /// once.
    virtual std::map<Pid, std::vector<int>> listeningPortsOf(const std::vector<Pid>& pids) {
        std::map<Pid, std::vector<int>> ports;
        for (const Pid pid : pids) ports.emplace(pid, listeningPorts(pid));
        return ports;
    }
};

}  // namespace tolvane
