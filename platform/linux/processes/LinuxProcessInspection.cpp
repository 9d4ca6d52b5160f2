#include "platform/linux/processes/LinuxProcessInspection.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/linux/processes/CommandLine.h"
#include "platform/linux/processes/ListeningSockets.h"
#include "platform/linux/processes/ProcCgroup.h"

namespace tolvane::linuxhost {

namespace {

constexpr std::uint64_t mostTurns = 16;
/// The greatest age of a fact, as far as sweeps allow.
constexpr Seconds oldestFact{32};
constexpr std::uint8_t sightingsToSettle = 2;

using Membership = ProcEntryReader::Membership;

std::string mountOfUnifiedGroups(ProcFiles& files) {
    std::string mounts;
    files.readWhole("self/mounts", mounts);
    return std::string(cgroupMount(mounts));
}

std::uint64_t part(std::uint64_t turns, std::uint64_t divisor) { return std::max<std::uint64_t>(turns / divisor, 1); }

std::optional<Text> unlessEmpty(const Text& text) { return text.empty() ? std::nullopt : std::optional(text); }

}  // namespace

LinuxProcessInspection::LinuxProcessInspection(LinuxInspectionOptions options)
    : options_(std::move(options)),
      files_(options_.procFolder, options_.observer),
      reader_(files_, gate_),
      ancestry_([this](Pid pid) { return rowWithFacts(pid); }, options_.uid, options_.home) {}

std::vector<Pid> LinuxProcessInspection::allPids() {
    if (!files_.listPids(listing_)) return {};
    beginSweep();
    mergeListing();
    return listing_;
}

void LinuxProcessInspection::beginSweep() {
    if (sweep_++ == 0) {
        gate_.watch(mountOfUnifiedGroups(files_));
        memoryMoves_.emplace(files_);
    }
    strays_.clear();
    chooseTurns();
    gate_.beginSweep();
    memoryMoved_ = gate_.isOn() && memoryMoves_->sinceLastCall();
}

void LinuxProcessInspection::mergeListing() {
    left_.clear();
    table_.merge(listing_, [this](ProcEntry& entry) {
        left_.push_back(entry.pid);
        reader_.forget(entry);
    });
    table_.orphanChildrenOf(left_);
}

/// Powers of two, so that a row due in one division is also due in the next finer one.
void LinuxProcessInspection::chooseTurns() {
    const Seconds now = options_.uptime();
    const Seconds interval = lastSweep_ ? now - *lastSweep_ : Seconds{0};
    lastSweep_ = now;
    turns_ = mostTurns;
    while (turns_ > 1 && interval * static_cast<double>(turns_) > oldestFact) turns_ /= 2;
}

bool LinuxProcessInspection::isTurn(Pid pid, std::uint64_t turns) const {
    return (sweep_ + static_cast<std::uint64_t>(pid)) % turns == 0;
}

std::optional<Depth> LinuxProcessInspection::depthNow(const ProcEntry& entry) const {
    if (!entry.known) return Depth::fresh;
    if (entry.kernelThread) {
        return entry.awake || isTurn(entry.pid, part(turns_, 2)) ? std::optional(Depth::stat) : std::nullopt;
    }
    if (entry.sightings < sightingsToSettle || isTurn(entry.pid, turns_)) return Depth::recheck;
    if (entry.orphaned || memoryMoved_ || gate_.moved(entry.group)) return Depth::stat;
    return std::nullopt;
}

void LinuxProcessInspection::refreshListed(ProcEntry& entry, Depth depth) {
    const bool wasKnown = entry.known;
    reader_.refresh(entry, depth, isTurn(entry.pid, part(turns_, 4)), Membership::joined);
    // Its children got another parent when it died, though it is still listed.
    if (wasKnown && !entry.known) table_.orphanChildrenOf(std::array{entry.pid});
}

void LinuxProcessInspection::readInSweep(ProcEntry& entry) {
    if (entry.readSweep == sweep_) return;
    entry.readSweep = sweep_;
    if (const auto depth = depthNow(entry)) refreshListed(entry, *depth);
}

ProcEntry* LinuxProcessInspection::stray(Pid pid) {
    const auto [place, isNew] = strays_.try_emplace(pid, ProcEntry{.pid = pid});
    if (isNew) reader_.refresh(place->second, Depth::fresh, true, Membership::onlyRead);
    return place->second.known ? &place->second : nullptr;
}

ProcEntry* LinuxProcessInspection::rowWithFacts(Pid pid) {
    ProcEntry* entry = table_.peek(pid);
    if (!entry) return stray(pid);
    if (!entry->known) readInSweep(*entry);
    return entry->known ? entry : nullptr;
}

ProcEntry* LinuxProcessInspection::answered(Pid pid) {
    ProcEntry* entry = table_.find(pid);
    if (entry && entry->askedSweep == sweep_) return entry->known ? entry : nullptr;
    if (!entry) return pid < 1 ? nullptr : stray(pid);
    return bsdRecord(pid) ? entry : nullptr;
}

std::optional<BSDRecord> LinuxProcessInspection::bsdRecord(Pid pid) {
    if (pid < 1) return std::nullopt;
    ProcEntry* entry = table_.find(pid);
    if (!entry) {
        strays_.clear();
        entry = stray(pid);
    } else if (std::exchange(entry->askedSweep, sweep_) == sweep_) {
        refreshListed(*entry, Depth::fresh);
    } else {
        readInSweep(*entry);
    }
    if (!entry || !entry->known) return std::nullopt;
    ancestry_.settleParent(*entry);
    return BSDRecord{.ppid = entry->reportedParent,
                     .uid = entry->uid,
                     .name = entry->name,
                     .startTime = options_.clock.dateOfTicks(entry->startTicks),
                     .programStamp = entry->execStamp + entry->titleStamp};
}

std::optional<UsageRecord> LinuxProcessInspection::usage(Pid pid) {
    const ProcEntry* entry = answered(pid);
    if (!entry) return std::nullopt;
    return UsageRecord{.userTime = entry->userTicks,
                       .systemTime = entry->systemTicks,
                       .performanceUserTime = entry->userTicks,
                       .performanceSystemTime = entry->systemTicks,
                       .footprint = entry->footprint,
                       .peakFootprint = entry->peakFootprint};
}

std::optional<Text> LinuxProcessInspection::executablePath(Pid pid) {
    const ProcEntry* entry = answered(pid);
    return entry ? unlessEmpty(entry->executable) : std::nullopt;
}

std::optional<MemoryRecord> LinuxProcessInspection::memoryRecord(Pid pid) {
    const ProcEntry* entry = answered(pid);
    if (!entry) return std::nullopt;
    return MemoryRecord{.compressed = entry->swapped, .swapIns = 0};
}

std::optional<Text> LinuxProcessInspection::workingDirectory(Pid pid) {
    ProcEntry* entry = answered(pid);
    if (!entry) return std::nullopt;
    if (entry->inOtherPidNamespace) ancestry_.settleSystem(*entry);
    return entry->container ? std::nullopt : unlessEmpty(entry->workingDirectory);
}

std::optional<bool> LinuxProcessInspection::belongsToSystem(Pid pid) {
    ProcEntry* entry = answered(pid);
    if (!entry) return std::nullopt;
    ancestry_.settleSystem(*entry);
    return entry->system;
}

std::optional<TextList> LinuxProcessInspection::arguments(Pid pid) {
    ProcEntry* entry = answered(pid);
    if (!entry || entry->kernelThread) return std::nullopt;
    const auto bytes = reader_.arguments(pid);
    if (!bytes) return std::nullopt;
    const auto words = splitArguments(*bytes);
    entry->titled = isTitle(words, entry->executable);
    if (!entry->titled) return argumentTexts(words);
    const auto command = commandOfTitle(*entry, words.front());
    return argumentTexts({command.begin(), command.end()});
}

std::vector<std::string> LinuxProcessInspection::commandOfTitle(const ProcEntry& entry, std::string_view title) {
    environment_.clear();
    files_.readWhole(PidPath(entry.pid, "environ"), environment_);
    const auto path = environmentValue(environment_, "PATH").value_or(std::string_view{});
    return argumentsOfTitle(title, entry.executable,
                            {.head = executableHead, .folders = searchFolders(path, entry.executable)});
}

std::optional<std::vector<std::string>> LinuxProcessInspection::environment(Pid pid) {
    const ProcEntry* entry = answered(pid);
    if (!entry || entry->kernelThread) return std::nullopt;
    if (!files_.readWhole(PidPath(pid, "environ"), environment_)) return std::nullopt;
    return environmentTexts(environment_);
}

std::vector<int> LinuxProcessInspection::listeningPorts(Pid pid) { return ListeningTables(files_).portsOf(pid); }

std::map<Pid, std::vector<int>> LinuxProcessInspection::listeningPortsOf(const std::vector<Pid>& pids) {
    ListeningTables tables(files_);
    std::map<Pid, std::vector<int>> ports;
    for (const Pid pid : pids) ports.emplace(pid, tables.portsOf(pid));
    return ports;
}

}  // namespace tolvane::linuxhost
