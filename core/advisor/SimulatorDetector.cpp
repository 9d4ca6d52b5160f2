#include <string>
#include <unordered_set>

#include "core/advisor/Advice.h"
#include "core/advisor/AdviceWords.h"
#include "core/advisor/Simulators.h"
#include "core/sampling/ProcessTree.h"

namespace tolvane::Detectors {

namespace {

constexpr Seconds leastIdle{3600};

/// The device's first process and everything below it, including programs of the system, but only the user's own
/// processes.
RowList membersOf(const ProcRow& first, const World& world, const ProcessTree& tree) {
    const auto below = tree.descendants(first.id());
    std::unordered_set<Pid> pids(below.begin(), below.end());
    pids.insert(first.id());
    RowList members;
    for (const auto& row : world.rows) {
        if (row.sample.uid == world.uid && pids.contains(row.id())) members.push_back(&row);
    }
    return members;
}

std::string titleOf(const std::string& device, const AdviceScene& scene) {
    const auto name = scene.simulatorName ? scene.simulatorName(device) : std::nullopt;
    return name.value_or("Simulator");
}

void addDevice(Advice& advice, const std::string& device, const RowList& members) {
    const auto& scene = advice.scene;
    const Seconds idle = AdviceWords::idleTime(members, scene.now);
    if (idle < leastIdle) return;
    advice.add({.id = "simulator|" + device,
                .kind = Suggestion::Kind::simulator,
                .title = titleOf(device, scene),
                .appPath = std::nullopt,
                .pids = AdviceWords::pids(members),
                .memory = AdviceWords::footprint(members),
                .evidence = "Its " + std::to_string(members.size()) + " processes have been idle for " +
                            AdviceWords::duration(idle, scene) + ".",
                .action = RuleAction::terminate,
                .rule = std::nullopt,
                .cpu = std::nullopt});
}

}  // namespace

void findSimulators(Advice& advice) {
    const auto& world = advice.scene.world;
    if (world.frontmostAppID == Simulators::appID) return;
    std::optional<ProcessTree> tree;
    for (const auto* row : advice.eligible()) {
        if (row->sample.name != Simulators::processName) continue;
        const auto device = Simulators::device(row->sample.args);
        if (!device) continue;
        if (!tree) tree.emplace(world.rows);
        addDevice(advice, *device, membersOf(*row, world, *tree));
    }
}

}  // namespace tolvane::Detectors
