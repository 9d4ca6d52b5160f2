#include "platform/linux/processes/ProcEntryReader.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "platform/linux/processes/CommandLine.h"
#include "platform/linux/processes/ProcCgroup.h"
#include "platform/linux/processes/ProcStatus.h"
#include "platform/linux/processes/ProcessName.h"
#include "platform/linux/processes/SystemPrograms.h"
#include "platform/linux/text/RepairedText.h"
#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

/// The kernel appends this to the path of a deleted file, and so to the program of every process that an update
/// replaced.
std::string_view withoutDeletedMark(std::string_view path) {
    constexpr std::string_view mark = " (deleted)";
    return path.ends_with(mark) ? path.substr(0, path.size() - mark.size()) : path;
}

template <typename Value>
bool replace(Value& held, const Value& value) {
    return std::exchange(held, value) != value;
}

std::uint64_t hashOf(const ProcCgroup& groups) {
    const std::hash<std::string_view> hash;
    return hash(groups.unified) * 31 + hash(groups.systemd);
}

}  // namespace

void ProcEntryReader::refresh(ProcEntry& entry, Depth depth, bool folderDue, Membership membership) {
    argumentsOf_ = 0;
    if (!entry.known) depth = Depth::fresh;
    entry.known = readFacts(entry, depth, folderDue, membership);
    entry.gone = !entry.known;
    entry.orphaned = false;
    if (!entry.known) forget(entry);
}

void ProcEntryReader::forget(ProcEntry& entry) {
    gate_.leave(entry.group);
    entry =
        ProcEntry{.pid = entry.pid, .readSweep = entry.readSweep, .askedSweep = entry.askedSweep, .gone = entry.gone};
}

bool ProcEntryReader::readFacts(ProcEntry& entry, Depth depth, bool folderDue, Membership membership) {
    // Read the group before the process: a run in between then shows in the group's next count.
    if (depth != Depth::stat && !entry.kernelThread) readGroup(entry, membership);
    const auto line = files_.read(PidPath(entry.pid, "stat"));
    const auto stat = line ? parseProcStat(*line) : std::nullopt;
    if (!stat || stat->isGone()) return false;
    const bool newLife = entry.known && entry.startTicks != stat->startTicks;
    if (newLife) depth = Depth::fresh;
    if (newLife) forget(entry);
    const bool moved = applyStat(entry, *stat);
    const bool program = applyProgram(entry, *stat) || depth == Depth::fresh;
    // The line is invalid from here on: the next read reuses its buffer.
    if (newLife) readGroup(entry, membership);
    if (entry.kernelThread) return true;
    if (program || (depth != Depth::stat && entry.executable.empty())) readProgram(entry);
    if ((moved || depth != Depth::stat) && !readStatus(entry)) return false;
    if (moved || folderDue || depth != Depth::stat) readFolder(entry);
    return true;
}

bool ProcEntryReader::applyStat(ProcEntry& entry, const ProcStat& stat) {
    const bool inUser = replace(entry.userTicks, stat.userTicks);
    const bool inKernel = replace(entry.systemTicks, stat.systemTicks);
    const bool resident = replace(entry.residentPages, stat.residentPages);
    const bool faulted = replace(entry.minorFaults, stat.minorFaults);
    entry.awake = inUser || inKernel;
    entry.startTicks = stat.startTicks;
    entry.kernelThread = stat.isKernelThread();
    if (replace(entry.ppid, stat.ppid)) entry.parentStale = entry.systemStale = true;
    if (replace(entry.onPseudoTerminal, stat.isOnPseudoTerminal())) entry.systemStale = true;
    return entry.awake || resident || faulted;
}

bool ProcEntryReader::applyProgram(ProcEntry& entry, const ProcStat& stat) {
    const bool another = replace(entry.execStamp, stat.execStamp);
    const bool renamed = entry.comm.view() != stat.comm;
    if (renamed) assign(entry.comm, stat.comm);
    // A program that renames itself also writes a new title: npm is "npm" before it is "npm run dev".
    if (renamed && std::exchange(entry.titled, false)) ++entry.titleStamp;
    if (renamed && entry.kernelThread) entry.name = entry.comm;
    return another || renamed;
}

void ProcEntryReader::readGroup(ProcEntry& entry, Membership membership) {
    entry.sightings = std::min<std::uint8_t>(static_cast<std::uint8_t>(entry.sightings + 1), 2);
    const auto text = files_.read(PidPath(entry.pid, "cgroup"));
    if (!text) return;
    const ProcCgroup groups = parseProcCgroup(*text);
    const std::uint64_t hash = hashOf(groups);
    if (hash == entry.unitHash) return;
    entry.unitHash = hash;
    entry.unit = unitFacts(groups.unit());
    entry.systemStale = entry.parentStale = true;
    gate_.leave(std::exchange(entry.group, CgroupGate::none));
    if (membership == Membership::joined) entry.group = gate_.join(groups.unified);
}

bool ProcEntryReader::readStatus(ProcEntry& entry) {
    const auto text = files_.read(PidPath(entry.pid, "status"));
    const auto status = text ? parseProcStatus(*text) : std::nullopt;
    if (!status) return false;
    if (replace(entry.uid, status->uid)) entry.systemStale = true;
    if (replace(entry.inOtherPidNamespace, status->inOtherPidNamespace)) entry.systemStale = true;
    // Once the first thread has ended, the kernel shows no memory, though the other threads still hold it.
    if (!status->anonymous) return true;
    entry.swapped = status->swapped;
    entry.footprint = *status->anonymous + status->swapped;
    entry.peakFootprint = std::max(entry.peakFootprint, entry.footprint);
    return true;
}

void ProcEntryReader::readFolder(ProcEntry& entry) {
    const auto link = files_.readLink(PidPath(entry.pid, "cwd"));
    const auto folder = withoutDeletedMark(link.value_or(std::string_view{}));
    if (entry.workingDirectory == folder) return;
    assign(entry.workingDirectory, folder);
    entry.systemStale = true;
}

void ProcEntryReader::readProgram(ProcEntry& entry) {
    const auto link = files_.readLink(PidPath(entry.pid, "exe"));
    assign(entry.executable, withoutDeletedMark(link.value_or(std::string_view{})));
    entry.systemStale = true;
    nameProgram(entry);
}

void ProcEntryReader::nameProgram(ProcEntry& entry) {
    const auto program = entry.executable.empty() ? entry.comm.view() : Scan::lastComponent(entry.executable);
    const bool shell = isShell(program);
    std::vector<std::string_view> words;
    if (shell || isCutShort(entry.comm, entry.executable)) {
        words = splitArguments(arguments(entry.pid).value_or(std::string_view{}));
    }
    entry.loginShell = shell && !words.empty() && words.front().starts_with('-');
    assign(entry.name, processName(entry.comm, entry.executable, words));
}

std::optional<std::string_view> ProcEntryReader::arguments(Pid pid) {
    if (argumentsOf_ == pid) return arguments_;
    argumentsOf_ = 0;
    if (!files_.readWhole(PidPath(pid, "cmdline"), arguments_)) return std::nullopt;
    argumentsOf_ = pid;
    return arguments_;
}

}  // namespace tolvane::linuxhost
