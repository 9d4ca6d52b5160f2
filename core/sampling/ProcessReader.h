#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/sampling/PidTable.h"
#include "core/sampling/ProcSample.h"
#include "platform/ProcessInspection.h"

namespace tolvane {

/// Turns what the host reports of its processes into samples. Confined to one thread at a time; the inspection outlives
/// it. Nothing here fails: a process that is gone or that the host shields is left out, and a fact that cannot be read
/// stays empty or 0.
class ProcessReader {
public:
    /// `hybrid` means that the machine has efficiency cores.
    ProcessReader(ProcessInspection& inspection, bool hybrid);

    /// All processes in the order of the host. One call is one sweep.
    std::vector<ProcSample> readAll();

    /// Returns nullopt when the process is gone, or when the host shields one of the two records that make a sample.
    std::optional<ProcSample> read(Pid pid);

    /// NAME=value entries; empty when they cannot be read.
    static std::vector<std::string> environment(ProcessInspection& inspection, Pid pid);

    /// TCP ports that the process listens on, sorted, without repeats.
    static std::vector<int> listeningPorts(ProcessInspection& inspection, Pid pid);
    /// The same for several processes, with an entry for each pid, even without ports.
    static std::map<Pid, std::vector<int>> listeningPorts(ProcessInspection& inspection, const std::vector<Pid>& pids);

private:
    /// The arguments of one run of one program. A process that starts another program in its place (a shell's `exec`,
    /// or a child seen between fork and exec) keeps pid and start time; only the stamp shows that its arguments have
    /// changed. An empty list is cached too, so that a shielded process is asked once.
    struct Arguments {
        Pid pid = 0;
        /// The latest sweep that saw the process.
        std::uint32_t sweep = 0;
        Date startTime;
        std::uint64_t programStamp = 0;
        TextList args;
    };

    bool readInto(ProcSample& sample, Pid pid);
    void takeUsage(ProcSample& sample, const UsageRecord& usage) const;
    void takeMemory(ProcSample& sample);
    TextList argumentsOf(Pid pid, const BSDRecord& record);

    ProcessInspection& inspection_;
    const double nanosPerTick_;
    const bool hybrid_;
    PidTable<Arguments> argsCache_;
    std::uint32_t sweep_ = 0;
};

}  // namespace tolvane
