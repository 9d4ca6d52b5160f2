#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/processes/CgroupGate.h"
#include "platform/linux/processes/ProcFiles.h"
#include "platform/linux/processes/ProcStat.h"
#include "platform/linux/processes/ProcTable.h"

namespace tolvane::linuxhost {

/// How much of a process is read.
enum class Depth {
    /// `stat`, and what it shows to have moved.
    stat,
    /// The same, and what `stat` cannot show: control group, memory, working folder.
    recheck,
    /// Everything.
    fresh,
};

/// Reads the files of one process into its row. One thread.
class ProcEntryReader {
public:
    /// `gate` keeps the memberships of the rows that `Membership::joined` asks for.
    ProcEntryReader(ProcFiles& files, CgroupGate& gate) : files_(files), gate_(gate) {}

    /// A row that stays outside the table joins no group: nobody would leave it.
    enum class Membership { joined, onlyRead };

    /// Afterwards the row is `known`, or it is not and `gone` when the process is. `folderDue` has the working folder
    /// read though nothing else moved.
    void refresh(ProcEntry& entry, Depth depth, bool folderDue, Membership membership);
    /// Forgets all but the pid and leaves the group.
    void forget(ProcEntry& entry);
    /// The bytes of `cmdline`; valid until the next call for another process or refresh.
    std::optional<std::string_view> arguments(Pid pid);

private:
    bool readFacts(ProcEntry& entry, Depth depth, bool folderDue, Membership membership);
    bool applyStat(ProcEntry& entry, const ProcStat& stat);
    bool applyProgram(ProcEntry& entry, const ProcStat& stat);
    void readGroup(ProcEntry& entry, Membership membership);
    bool readStatus(ProcEntry& entry);
    void readFolder(ProcEntry& entry);
    void readProgram(ProcEntry& entry);
    void nameProgram(ProcEntry& entry);

    ProcFiles& files_;
    CgroupGate& gate_;
    std::string arguments_;
    Pid argumentsOf_ = 0;
};

}  // namespace tolvane::linuxhost
