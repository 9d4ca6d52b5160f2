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

/// What the detectors share while one list of suggestions is made: whom they may look at, who is claimed, and what was
/// found. Refers to the scene and the advisor.
class Advice {
public:
    Advice(const AdviceScene& asked, const Advisor& tracks);

    const AdviceScene& scene;
    const Advisor& advisor;

    /// The user's own programs but for agents, their sessions and the application in front; in the world's order.
    const RowList& eligible() const { return eligible_; }
    /// Those of them outside applications.
    const RowList& loose() const { return loose_; }

    bool isClaimed(const ProcRow& row) const { return claimed_.contains(row.id()); }
    /// Takes the finding and claims its processes, and one more. It is dropped whole when one of its processes is
    /// claimed already or a finding has its id.
    void add(Suggestion suggestion, std::optional<Pid> alsoClaim = std::nullopt);
    /// Looks up at once on which ports these processes listen, as far as it was not asked before.
    void askPorts(RowSpan rows);
    /// None for a process that was not asked for.
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

/// Each looks for one kind of finding and adds what it finds. They run in this order, and who comes first claims.
namespace tolvane::Detectors {

/// Simulated devices that are left booted.
void findSimulators(Advice& advice);
/// Servers of projects whose terminal has gone.
void findLeftRunning(Advice& advice);
/// Processes whose memory rises steadily.
void findGrowing(Advice& advice);
/// Older copies of a server that runs more than once.
void findDuplicates(Advice& advice);
/// What keeps half a core or more busy behind the application in front.
void findBusy(Advice& advice);
/// What sits unused and holds much.
void findIdle(Advice& advice);

}  // namespace tolvane::Detectors
