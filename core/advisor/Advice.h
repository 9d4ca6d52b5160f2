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
