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
    /// How often it was renamed while a title stood in place of its arguments.
    std::uint64_t titleStamp = 0;
    std::uint64_t footprint = 0;
    std::uint64_t swapped = 0;
    /// The highest footprint that we saw.
    std::uint64_t peakFootprint = 0;

    /// Sweeps in which it was read last and in which `bsdRecord` was asked for it last.
    std::uint64_t readSweep = 0;
    std::uint64_t askedSweep = 0;
    CgroupGate::Group group = CgroupGate::none;
    /// How many sweeps listed this life, up to 2.
    std::uint8_t sightings = 0;

    /// Its facts were read; false for a new row, and for one that could not be read.
    bool known = false;
    /// Listed, but dead.
    bool gone = false;
    bool kernelThread = false;
    /// A kernel thread that worked between its last two readings.
    bool awake = false;
    /// Its parent left: somebody else is its parent now.
    bool orphaned = false;
    bool onPseudoTerminal = false;
    bool inOtherPidNamespace = false;
    /// In another pid namespace, and no application's sandbox.
    bool container = false;
    /// A shell that begins a login.
    bool loginShell = false;
    /// Once seen below a program that people start things from, for life.
    bool startedByUser = false;
    /// `reportedParent` and `system` have to be worked out anew.
    bool parentStale = true;
    bool systemStale = true;
    /// A title stood where its arguments were last asked for.
    bool titled = false;

    UnitFacts unit = {};
    /// Tells one place in the control groups from another.
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
    /// Makes the rows those of `listing`, which is ascending. `leaving` is called with each row that goes.
    template <typename Leaving>
    void merge(const std::vector<Pid>& listing, Leaving leaving);

    /// O(1) for pids asked for in the order of the listing, again and again for one included.
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
