#include "platform/linux/processes/Ancestry.h"

#include <utility>

#include "platform/linux/processes/SystemPrograms.h"
#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

/// Real trees are shallower; the limit ends a ring made of rows read at different moments.
constexpr int deepest = 64;

bool startsPrograms(const ProcEntry& entry) {
    if (entry.startedByUser || entry.loginShell || entry.onPseudoTerminal) return true;
    const auto program = entry.executable.empty() ? entry.name.view() : Scan::lastComponent(entry.executable);
    return isLauncher(program);
}

}  // namespace

Ancestry::Ancestry(Lookup lookup, std::uint32_t uid, std::string home)
    : lookup_(std::move(lookup)), uid_(uid), home_(std::move(home)) {}

template <typename Stop>
const ProcEntry* Ancestry::ancestor(const ProcEntry& entry, Stop stop) const {
    Pid parent = entry.ppid;
    for (int depth = 0; depth < deepest && parent > 1; ++depth) {
        const ProcEntry* row = lookup_(parent);
        if (!row) return nullptr;
        if (stop(*row)) return row;
        parent = row->ppid;
    }
    return nullptr;
}

void Ancestry::settleParent(ProcEntry& entry) const {
    if (!std::exchange(entry.parentStale, false)) return;
    const ProcEntry* parent = entry.ppid > 1 && !entry.kernelThread ? lookup_(entry.ppid) : nullptr;
    entry.reportedParent = parent && isUserManager(*parent) ? 1 : entry.ppid;
}

bool Ancestry::isUserManager(const ProcEntry& entry) const {
    return entry.unit.userManager && entry.uid == uid_ && entry.comm == "systemd";
}

void Ancestry::settleSystem(ProcEntry& entry) const {
    if (!std::exchange(entry.systemStale, false)) return;
    entry.container = entry.inOtherPidNamespace && isContainer(entry);
    entry.startedByUser = entry.startedByUser || isStartedByUser(entry);
    entry.system = belongsToSystem({.pid = entry.pid,
                                    .kernelThread = entry.kernelThread,
                                    .ofAnotherUser = entry.uid != uid_,
                                    .container = entry.container,
                                    .unit = entry.unit,
                                    .executable = entry.executable,
                                    .startedByUser = entry.startedByUser,
                                    .insideProject = isInsideProject(entry.workingDirectory, home_)});
}

bool Ancestry::isStartedByUser(const ProcEntry& entry) const {
    if (entry.kernelThread || entry.uid != uid_) return false;
    return entry.onPseudoTerminal || entry.loginShell || ancestor(entry, startsPrograms) != nullptr;
}

/// Browsers and similar programs keep their helpers in a pid namespace too. Those run the program that made the
/// namespace, in its control group; a container engine gives each container a group of its own.
bool Ancestry::isContainer(const ProcEntry& entry) const {
    if (entry.unit.application) return false;
    const ProcEntry* outside = ancestor(entry, [](const ProcEntry& row) { return !row.inOtherPidNamespace; });
    return !outside || outside->uid != uid_ || outside->unitHash != entry.unitHash ||
           outside->executable != entry.executable;
}

}  // namespace tolvane::linuxhost
