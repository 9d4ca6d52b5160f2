#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/ProcessInspection.h"
#include "platform/linux/machine/LinuxClockFacts.h"
#include "platform/linux/processes/Ancestry.h"
#include "platform/linux/processes/CgroupGate.h"
#include "platform/linux/processes/MemoryMoves.h"
#include "platform/linux/processes/ProcEntryReader.h"
#include "platform/linux/processes/ProcFiles.h"
#include "platform/linux/processes/ProcTable.h"

namespace tolvane::linuxhost {

struct LinuxInspectionOptions {
    /// One value for all inspections of a run.
    LinuxClockFacts clock = {};
    /// The user whose processes are not another user's.
    std::uint32_t uid = 0;
    /// Projects lie below it; empty when there are none.
    std::string home = {};
    std::string procFolder = "/proc";
    /// Called with each file below the folder that is asked for.
    ProcFiles::Observer observer = {};
    std::function<Seconds()> uptime = linuxhost::uptime;
};

/// Processes as /proc shows them. Making one is cheap until its first sweep, so it may be made for a single question.
///
/// Facts without an exact equivalent on Linux: `footprint` is anonymous resident memory plus what is swapped out, and
/// `compressed` the swapped-out part; shared file pages count in neither. The kernel keeps no such peak, so
/// `peakFootprint` is the highest footprint that this inspection saw. Swap-ins and time by class of core are not
/// accounted per process. A child of the user's service manager has parent 1, as orphans have elsewhere. A zombie
/// counts as gone, though it is listed. `name` is the program's where the kernel's is cut or says nothing. A title
/// written over the arguments is read as the command that it names. A container's process belongs to the system and has
/// no working folder here.
///
/// Not everything is read in every sweep, because reading costs far more than everything done with the results. What is
/// skipped, and why that is safe:
/// - All files of a process whose control group used no CPU time since the last sweep: a process that did not run
/// cannot
///   have allocated, changed folder, executed, renamed itself or ended. The kernel can take memory from a process that
///   does not run; when the machine's counters show that it did, every `stat` is read.
/// - `status` and the working folder of a process whose CPU time, resident pages and minor faults are unchanged; memory
///   grows by faults. A change of folder can be shorter than a clock tick, so for processes in groups that ran, the
///   folder is also read every fourth sweep.
/// - Executable, name and arguments while the addresses that exec sets are unchanged; they belong to the program.
/// - Kernel threads that did no work at their last reading are read in every eighth sweep.
/// - Group membership, except at first sight, in the sweep after (service managers move new processes) and at
///   re-checks. When a parent ends, its children's `stat` is read.
/// Every process is re-checked in full in one of 16 sweeps, and more often when sweeps are rare, so no fact is older
/// than about half a minute, or than 16 sweeps where these take longer. Before acting on a process, call `bsdRecord`
/// again, which reads everything.
class LinuxProcessInspection : public ProcessInspection {
public:
    explicit LinuxProcessInspection(LinuxInspectionOptions options);

    double nanosPerTick() const override { return options_.clock.nanosPerTick(); }
    std::vector<Pid> allPids() override;
    std::optional<BSDRecord> bsdRecord(Pid pid) override;
    std::optional<UsageRecord> usage(Pid pid) override;
    std::optional<Text> executablePath(Pid pid) override;
    std::optional<TextList> arguments(Pid pid) override;
    std::optional<std::vector<std::string>> environment(Pid pid) override;
    std::optional<MemoryRecord> memoryRecord(Pid pid) override;
    std::optional<Text> workingDirectory(Pid pid) override;
    std::optional<bool> belongsToSystem(Pid pid) override;
    std::vector<int> listeningPorts(Pid pid) override;
    std::map<Pid, std::vector<int>> listeningPortsOf(const std::vector<Pid>& pids) override;

    /// The number of control groups watched now; with 0 or 1 there is nothing to gate.
    std::size_t watchedGroups() const { return gate_.groups(); }

private:
    void beginSweep();
    void mergeListing();
    void chooseTurns();
    bool isTurn(Pid pid, std::uint64_t turns) const;
    std::optional<Depth> depthNow(const ProcEntry& entry) const;
    void refreshListed(ProcEntry& entry, Depth depth);
    void readInSweep(ProcEntry& entry);
    ProcEntry* stray(Pid pid);
    ProcEntry* rowWithFacts(Pid pid);
    ProcEntry* answered(Pid pid);
    std::vector<std::string> commandOfTitle(const ProcEntry& entry, std::string_view title);

    LinuxInspectionOptions options_;
    ProcFiles files_;
    CgroupGate gate_;
    std::optional<MemoryMoves> memoryMoves_;
    ProcEntryReader reader_;
    ProcTable table_;
    Ancestry ancestry_;
    std::vector<Pid> listing_;
    std::vector<Pid> left_;
    /// Rows of pids that the latest sweep did not list.
    std::map<Pid, ProcEntry> strays_;
    std::string environment_;
    std::optional<Seconds> lastSweep_;
    std::uint64_t sweep_ = 0;
    std::uint64_t turns_ = 1;
    bool memoryMoved_ = false;
};

}  // namespace tolvane::linuxhost
