#pragma once

#include <map>
#include <optional>
#include <unordered_set>
#include <vector>

#include "core/advisor/AdviceScene.h"
#include "core/advisor/Advisor.h"
#include "core/advisor/RowGroups.h"
#include "core/advisor/Suggestion.h"

namespace tolvane {

/// State that the detectors share while one list of suggestions is made: the rows they may look at, the processes
/// already claimed, and the findings. Refers to the scene and the advisor.
class Advice {
public:
    Advice(const AdviceScene& asked, const Advisor& tracks);

    const AdviceScene& scene;
    const Advisor& advisor;

    /// The user's own programs except agents, their sessions and the application in front; in the world's order.
    const RowList& eligible() const { return eligible_; }
    /// The eligible rows outside applications.
    const RowList& loose() const { return loose_; }

    bool isClaimed(const ProcRow& row) const { return claimed_.contains(row.id()); }
    /// Adds the finding and claims its processes, plus `alsoClaim`. Drops the finding whole when one of its processes
    /// is already claimed or another finding has its id.
    void add(Suggestion suggestion, std::optional<Pid> alsoClaim = std::nullopt);
    /// Looks up in one call which ports these processes listen on, skipping processes that were looked up before.
    void askPorts(RowSpan rows);
    /// Empty for a process that was not looked up.
    const std::vector<int>& portsOf(const ProcRow& row) const;

    std::vector<Suggestion>& results() { return results_; }

private:
    RowList eligible_;
    RowList loose_;
    std::vector<Suggestion> results_;
    std::unordered_set<Pid> claimed_;
    std::map<Pid, std::vector<int>> ports_;
};

}  // namespace tolvane

/// Each looks for one kind of finding and adds what it finds. They run in this order, and the first to claim a process
/// keeps it.
namespace tolvane::Detectors {

/// Simulated devices left booted.
void findSimulators(Advice& advice);
/// Servers of projects whose terminal has gone.
void findLeftRunning(Advice& advice);
/// Processes whose memory rises steadily.
void findGrowing(Advice& advice);
/// Older copies of a server that runs more than once.
void findDuplicates(Advice& advice);
/// Background work that keeps half a core or more busy.
void findBusy(Advice& advice);
/// Applications and programs that sit unused and hold much memory.
void findIdle(Advice& advice);

}  // namespace tolvane::Detectors
