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
    /// Whose processes are not other users'.
    std::uint32_t uid = 0;
    /// Below it lie projects; empty for nowhere.
    std::string home = {};
    std::string procFolder = "/proc";
    /// Hears of each file below the folder that is asked for.
    ProcFiles::Observer observer = {};
    std::function<Seconds()> uptime = linuxhost::uptime;
};

/// Processes as /proc shows them. Making one costs little until its first sweep; it may be made for one question.
///
/// Facts without an exact twin here. `footprint` is anonymous resident memory and what of the process is in swap,
/// `compressed` the part in swap; shared file pages count in neither. The kernel keeps no such peak:
/// `peakFootprint` is the highest footprint that this inspection saw. Swap-ins and time by class of core are not
/// accounted per process. A child of the user's service manager has parent 1, as orphans have elsewhere. A dead
/// process that nobody waited for is gone, though the list names it. `name` is the program's where the kernel's is cut
/// or says nothing. A title written over the arguments is read as the command that it names. A container's process
/// belongs to the system and has no working folder of ours.
///
/// Not everything is read in every sweep, because reading costs far more than all that is done with it. What is
/// skipped, and why that is safe:
/// - No file of a process whose control group used no CPU time since the last sweep: who did not run cannot have
///   allocated, moved folder, executed, renamed itself or ended. Memory can be taken or dropped without its owner
///   running; when the machine's counters say that this happened, everybody's `stat` is read.
/// - `status` and the working folder of a process whose CPU time, resident pages and minor faults stand still; memory
///   grows by faults. A change of folder can be shorter than a clock tick, so of processes in groups that ran the
///   folder is read every fourth sweep besides.
/// - Executable, name and arguments while the addresses that an exec sets stand still; they belong to the program.
/// - Kernel threads that did no work at their last reading are read in every eighth sweep.
/// - Group membership is read at first sight, in the sweep after (service managers move new processes), and at
///   re-checks. A parent's leaving has its children's `stat` read.
/// Every process is re-checked in full in one of 16 sweeps, more often when sweeps are rare: no fact is older than
/// about half a minute, or than 16 sweeps where these take longer to pass. Who is about to act asks `bsdRecord`
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

    /// Control groups that are watched now, 0 or 1 where telling them apart gains nothing.
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
    /// Rows of pids that no sweep listed.
    std::map<Pid, ProcEntry> strays_;
    std::string environment_;
    std::optional<Seconds> lastSweep_;
    std::uint64_t sweep_ = 0;
    std::uint64_t turns_ = 1;
    bool memoryMoved_ = false;
};

}  // namespace tolvane::linuxhost
