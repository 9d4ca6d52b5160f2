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
    /// `stat`, and the files that it shows to have changed.
    stat,
    /// The same, and what `stat` cannot show: control group, memory, working folder.
    recheck,
    /// Everything.
    fresh,
};

/// Reads the files of one process into its row. One thread.
class ProcEntryReader {
public:
    /// `gate` holds the memberships of rows read with `Membership::joined`.
    ProcEntryReader(ProcFiles& files, CgroupGate& gate) : files_(files), gate_(gate) {}

    /// A row outside the table joins no group, since nothing would make it leave.
    enum class Membership { joined, onlyRead };

    /// Afterwards the row is either `known` or `gone`. `folderDue` reads the working folder even if nothing else
    /// changed.
    void refresh(ProcEntry& entry, Depth depth, bool folderDue, Membership membership);
    /// Forgets all facts except the pid, and leaves the group.
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
