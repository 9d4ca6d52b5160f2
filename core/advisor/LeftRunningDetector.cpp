#include <set>
#include <string>
#include <vector>

#include "core/advisor/Advice.h"
#include "core/advisor/AdviceWords.h"

namespace tolvane::Detectors {

namespace {

constexpr Seconds leastIdle{3600};
constexpr std::int64_t ruleMinutes = 60;
/// A process whose parent has ended gets this one as its parent.
constexpr Pid adopter = 1;

bool mayBeLeftRunning(const ProcRow& row, const AdviceScene& scene) {
    return row.sample.ppid == adopter && row.project && scene.now - row.unusedSince >= leastIdle &&
           !scene.managed.contains(row.id());
}

std::vector<int> portsOf(RowSpan rows, const Advice& advice) {
    std::set<int> ports;
    for (const auto* row : rows) ports.insert(advice.portsOf(*row).begin(), advice.portsOf(*row).end());
    return {ports.begin(), ports.end()};
}

void addServer(Advice& advice, const RowGroups::Group& group) {
    const auto& scene = advice.scene;
    const auto& first = *group.rows.front();
    const auto label = AdviceWords::label(first);
    const auto idle = AdviceWords::idleTime(group.rows, scene.now);
    advice.add({.id = "left|" + std::string(group.key),
                .kind = Suggestion::Kind::leftRunning,
                .title = label,
                .appPath = std::nullopt,
                .pids = AdviceWords::pids(group.rows),
                .memory = AdviceWords::footprint(group.rows),
                .evidence = "Its terminal is gone. Listening on " +
                            AdviceWords::ports(portsOf(group.rows, advice), scene) + ", unused for " +
                            AdviceWords::duration(idle, scene) + ".",
                .action = RuleAction::terminate,
                .rule = AdviceWords::proposed("Stop " + label + " when its terminal is gone", first,
                                              {.unusedMinutes = ruleMinutes}),
                .cpu = std::nullopt});
}

}  // namespace

void findLeftRunning(Advice& advice) {
    RowList left;
    for (const auto* row : advice.loose()) {
        if (mayBeLeftRunning(*row, advice.scene)) left.push_back(row);
    }
    advice.askPorts(left);
    std::erase_if(left, [&](const ProcRow* row) { return advice.portsOf(*row).empty(); });
    const RowGroups groups(left, AdviceWords::appendKey);
    for (const auto& group : groups.sorted()) addServer(advice, group);
}

}  // namespace tolvane::Detectors
