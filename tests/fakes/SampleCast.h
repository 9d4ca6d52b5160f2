#pragma once

#include <map>
#include <vector>

#include "app/sampling/HistoryPoint.h"
#include "app/sampling/Snapshot.h"
#include "tests/fakes/FakeHost.h"

namespace tolvane::fakes {

/// A developer's machine in the middle of a working day, for looking at screens and testing them: applications with
/// helpers, dev servers in projects, agents, a process of the system. The same date gives the same machine.
struct SampleCast {
    Snapshot snapshot;
    std::map<Pid, std::vector<HistoryPoint>> history;
    std::vector<LoadPoint> loadHistory;

    /// The cast at `now`, with 12 cores of which 4 are efficiency cores.
    static SampleCast at(Date now);
    /// `count` processes in groups of about ten, for measurements; `turn` changes values and order.
    static std::vector<ProcRow> crowd(int count, int turn, Date now);
    /// Gives the host the names of the cast's applications.
    static void nameApplications(FakeWorld& world);
};

}  // namespace tolvane::fakes
