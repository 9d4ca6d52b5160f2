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

/// What the kernel shows every user of a process.
struct BSDRecord {
    Pid ppid = 0;
    std::uint32_t uid = 0;
    /// Short name, invalid UTF-8 repaired; empty when the kernel has none.
    Text name;
    Date startTime;
    /// Changes when the process executes another program under the same pid and start time, or rewrites its arguments;
    /// 0 where the host cannot tell.
    std::uint64_t programStamp = 0;

    bool operator==(const BSDRecord&) const = default;
};

/// What a process has used since it started and uses now. Times are ticks of `ProcessInspection::nanosPerTick`.
struct UsageRecord {
    std::uint64_t userTime = 0;
    std::uint64_t systemTime = 0;
    std::uint64_t performanceUserTime = 0;
    std::uint64_t performanceSystemTime = 0;
    /// Bytes.
    std::uint64_t footprint = 0;
    /// Bytes; the highest value that the host knows of.
    std::uint64_t peakFootprint = 0;

    bool operator==(const UsageRecord&) const = default;
};

/// The part of a process's memory that is not plainly resident, in bytes.
struct MemoryRecord {
    std::uint64_t compressed = 0;
    /// Running total of bytes read back from swap. Negative readings occur on some kernels and mean nothing.
    std::int64_t swapIns = 0;

    bool operator==(const MemoryRecord&) const = default;
};

/// Reads the host's processes, one group of facts per call; it cannot act on them.
/// Confined to one thread at a time: a host may cache between calls what cannot have changed.
///
/// `allPids` begins a sweep. Within a sweep, call `bsdRecord` first for each pid and finish all questions about that
/// pid before the next one, so that a host can read each of its files once. A second `bsdRecord` for a pid in the same
/// sweep reads the process afresh and in full.
///
/// Every question about a process that is gone or shielded returns nullopt or an empty list; nothing here throws.
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
    /// Whether the program belongs to the system, where the host knows more than the executable's path shows.
    virtual std::optional<bool> belongsToSystem(Pid pid) = 0;
    /// TCP ports on which this process listens; any order, repeats allowed.
    virtual std::vector<int> listeningPorts(Pid pid) = 0;
    /// The same for several processes, each under its pid. A host that has to read tables of the whole machine reads
    /// them once.
    virtual std::map<Pid, std::vector<int>> listeningPortsOf(const std::vector<Pid>& pids) {
        std::map<Pid, std::vector<int>> ports;
        for (const Pid pid : pids) ports.emplace(pid, listeningPorts(pid));
        return ports;
    }
};

}  // namespace tolvane
