#include "platform/linux/processes/LinuxServiceManager.h"

#include <unordered_map>
#include <vector>

#include "platform/linux/processes/ProcCgroup.h"
#include "platform/linux/processes/ProcFiles.h"
#include "platform/linux/processes/ProcStat.h"
#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

struct Member {
    Pid parent = 0;
    bool kept = false;
    /// A descendant runs outside of the kept services.
    bool startsOthers = false;
};

using Members = std::unordered_map<Pid, Member>;

bool isManager(std::string_view unit) { return unit.starts_with("user@"); }

bool isApplication(std::string_view unit) { return unit.starts_with("app-") || unit.starts_with("snap."); }

Members readMembers(ProcFiles& files) {
    Members members;
    std::vector<Pid> pids;
    if (!files.listPids(pids)) return members;
    members.reserve(pids.size());
    for (const Pid pid : pids) {
        Member member;
        if (const auto text = files.read(PidPath(pid, "cgroup")))
            member.kept = isKeptService(parseProcCgroup(*text).unit());
        if (const auto text = files.read(PidPath(pid, "stat"))) {
            if (const auto stat = parseProcStat(*text)) member.parent = stat->ppid;
        }
        members.emplace(pid, member);
    }
    return members;
}

/// Stops at the first ancestor that is marked already: those above it are marked too.
void markAncestors(Members& members, Pid parent) {
    for (auto above = members.find(parent); above != members.end() && !above->second.startsOthers;
         above = members.find(above->second.parent)) {
        above->second.startsOthers = true;
    }
}

}  // namespace

bool isKeptService(std::string_view unitPath) {
    bool kept = false;
    while (!unitPath.empty()) {
        const auto unit = Scan::take(unitPath, '/');
        if (isApplication(unit)) return false;
        kept = kept || (unit.ends_with(".service") && !isManager(unit));
    }
    return kept;
}

std::set<Pid> LinuxServiceManager::managedPIDs() {
    ProcFiles files(proc_);
    auto members = readMembers(files);
    for (const auto& [pid, member] : members) {
        if (!member.kept) markAncestors(members, member.parent);
    }
    std::set<Pid> pids;
    for (const auto& [pid, member] : members) {
        if (member.kept && !member.startsOthers) pids.insert(pid);
    }
    return pids;
}

}  // namespace tolvane::linuxhost
