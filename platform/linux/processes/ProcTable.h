#pragma once

#include <algorithm>
#include <optional>
#include <span>
#include <vector>

#include "base/Pid.h"
#include "base/Text.h"
#include "platform/linux/processes/CgroupGate.h"
#include "platform/linux/processes/ProcCgroup.h"

namespace tolvane::linuxhost {

/// What we keep of one listed process from sweep to sweep. Sizes in bytes, times in clock ticks.
struct ProcEntry {
    Pid pid = 0;
    Pid ppid = 0;
    /// What `BSDRecord` gives: 1 for a child of the user's service manager.
    Pid reportedParent = 0;
    std::uint32_t uid = 0;
    std::uint64_t startTicks = 0;
    std::uint64_t userTicks = 0;
    std::uint64_t systemTicks = 0;
    std::uint64_t residentPages = 0;
    std::uint64_t minorFaults = 0;
    std::uint64_t execStamp = 0;
    /// How often it was renamed while a title replaced its arguments.
    std::uint64_t titleStamp = 0;
    std::uint64_t footprint = 0;
    std::uint64_t swapped = 0;
    /// The highest footprint that this inspection saw.
    std::uint64_t peakFootprint = 0;

    /// The latest sweeps in which it was read and in which `bsdRecord` was called for it.
    std::uint64_t readSweep = 0;
    std::uint64_t askedSweep = 0;
    CgroupGate::Group group = CgroupGate::none;
    /// How many sweeps listed this life, up to 2.
    std::uint8_t sightings = 0;

    /// Whether its facts were read; false for a new row and for one that could not be read.
    bool known = false;
    /// Listed, but dead.
    bool gone = false;
    bool kernelThread = false;
    /// A kernel thread that worked between its last two readings.
    bool awake = false;
    /// Its parent ended, so it has a new one.
    bool orphaned = false;
    bool onPseudoTerminal = false;
    bool inOtherPidNamespace = false;
    /// In another pid namespace that is not an application's sandbox.
    bool container = false;
    /// A login shell.
    bool loginShell = false;
    /// Was once seen below a program that people start others from; never reset.
    bool startedByUser = false;
    /// `reportedParent` and `system` must be worked out again.
    bool parentStale = true;
    bool systemStale = true;
    /// When its arguments were last asked for, a title had replaced them.
    bool titled = false;

    UnitFacts unit = {};
    /// Changes when the process moves to another control group.
    std::uint64_t unitHash = 0;
    std::optional<bool> system = std::nullopt;

    Text comm = {};
    Text name = {};
    Text executable = {};
    Text workingDirectory = {};
};

/// The rows of all listed processes, ascending by pid. One thread.
class ProcTable {
public:
    /// Makes the rows match `listing`, which is ascending. Calls `leaving` with each row that is removed.
    template <typename Leaving>
    void merge(const std::vector<Pid>& listing, Leaving leaving);

    /// O(1) for pids in the order of the listing, including repeated calls for one pid.
    ProcEntry* find(Pid pid);
    /// The same without moving the place at which the next `find` begins.
    ProcEntry* peek(Pid pid);
    /// Marks the rows whose parent is among `parents`, which are ascending.
    void orphanChildrenOf(std::span<const Pid> parents);

    std::size_t size() const { return rows_.size(); }

private:
    bool sameAs(const std::vector<Pid>& listing) const;

    std::vector<ProcEntry> rows_;
    std::vector<ProcEntry> next_;
    std::size_t cursor_ = 0;
};

template <typename Leaving>
void ProcTable::merge(const std::vector<Pid>& listing, Leaving leaving) {
    cursor_ = 0;
    if (sameAs(listing)) return;
    next_.clear();
    next_.reserve(listing.size());
    auto row = rows_.begin();
    for (const Pid pid : listing) {
        for (; row != rows_.end() && row->pid < pid; ++row) leaving(*row);
        if (row != rows_.end() && row->pid == pid) {
            next_.push_back(std::move(*row++));
        } else {
            next_.push_back(ProcEntry{.pid = pid});
        }
    }
    for (; row != rows_.end(); ++row) leaving(*row);
    rows_.swap(next_);
    next_.clear();
}

}  // namespace tolvane::linuxhost
