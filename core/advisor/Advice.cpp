#include "core/advisor/Advice.h"

#include <algorithm>
#include <string>
#include <utility>

#include "core/rules/AgentNames.h"

namespace tolvane {

namespace {

bool isEligible(const ProcRow& row, const World& world, std::string& scratch) {
    if (!world.mayTouch(row.sample) || row.sample.isSystem() || row.claudeSession) return false;
    if (row.appID) return !world.isInFront(row);
    return row.appPath || !isAgent(row.sample, scratch);
}

}  // namespace

Advice::Advice(const AdviceScene& asked, const Advisor& tracks) : scene(asked), advisor(tracks) {
    std::string scratch;
    for (const auto& row : scene.world.rows) {
        if (!isEligible(row, scene.world, scratch)) continue;
        eligible_.push_back(&row);
        if (!row.appPath) loose_.push_back(&row);
    }
}

void Advice::add(Suggestion suggestion, std::optional<Pid> alsoClaim) {
    const bool isKnown = std::ranges::find(results_, suggestion.id, &Suggestion::id) != results_.end();
    const bool isTaken = std::ranges::any_of(suggestion.pids, [&](Pid pid) { return claimed_.contains(pid); });
    if (isKnown || isTaken) return;
    claimed_.insert(suggestion.pids.begin(), suggestion.pids.end());
    if (alsoClaim) claimed_.insert(*alsoClaim);
    results_.push_back(std::move(suggestion));
}

void Advice::askPorts(RowSpan rows) {
    std::vector<Pid> asked;
    for (const auto* row : rows) {
        if (ports_.try_emplace(row->id()).second) asked.push_back(row->id());
    }
    if (asked.empty() || !scene.ports) return;
    for (auto& [pid, ports] : scene.ports(asked)) ports_.insert_or_assign(pid, std::move(ports));
}

const std::vector<int>& Advice::portsOf(const ProcRow& row) const {
    static const std::vector<int> none;
    const auto known = ports_.find(row.id());
    return known == ports_.end() ? none : known->second;
}

}  // namespace tolvane
