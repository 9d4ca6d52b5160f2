#include <string>
#include <utility>

#include "core/advisor/Advice.h"
#include "core/advisor/AdviceWords.h"

namespace tolvane::Detectors {

namespace {

constexpr std::uint64_t leastCompressed = 256ULL << 20U;
constexpr Seconds leastIdleWhenTight{1800};
constexpr std::int64_t ruleMinutesWhenTight = 30;

/// A group is large when it holds at least 1/64 of physical memory.
constexpr std::uint64_t largePart = 64;
constexpr Seconds leastIdle{7200};
constexpr std::int64_t ruleMinutes = 120;

void appendGroup(const ProcRow& row, std::string& text) {
    if (row.appID) {
        text.append("app|").append(row.appID->view());
    } else {
        AdviceWords::appendKey(row, text);
    }
}

struct Holding {
    std::uint64_t size = 0;
    std::uint64_t compressed = 0;
    Seconds idle{0};
};

Holding holdingOf(RowSpan rows, Date now) {
    Holding holding{.size = AdviceWords::footprint(rows), .idle = AdviceWords::idleTime(rows, now)};
    for (const auto* row : rows) holding.compressed += row->sample.compressed;
    return holding;
}

bool isTight(const SystemMemory& memory) { return memory.swapUsed > 0 || memory.pressure != Pressure::normal; }

bool isMostlyCompressed(const Holding& holding, const SystemMemory& memory) {
    const auto half = holding.size / 2 + holding.size % 2;
    return isTight(memory) && holding.compressed >= leastCompressed && holding.compressed >= half &&
           holding.idle >= leastIdleWhenTight;
}

bool isLarge(const Holding& holding, const SystemMemory& memory) {
    const auto limit = memory.total / largePart + (memory.total % largePart == 0 ? 0 : 1);
    return holding.size >= limit && holding.idle >= leastIdle;
}

void addIdle(Advice& advice, const RowGroups::Group& group) {
    const auto& scene = advice.scene;
    const auto& first = *group.rows.front();
    const auto holding = holdingOf(group.rows, scene.now);
    const bool compressed = isMostlyCompressed(holding, scene.memory);
    const auto size = AdviceWords::bytes(holding.size, scene);
    const auto name = AdviceWords::name(first);
    const std::string verb = first.appID ? "Restart " : "Stop ";
    const std::string unused = "Unused for " + AdviceWords::duration(holding.idle, scene) + ", ";
    advice.add({.id = "idle|" + std::string(group.key),
                .kind = Suggestion::Kind::idle,
                .title = name,
                .appPath = first.appPath ? std::optional(first.appPath->str()) : std::nullopt,
                .pids = AdviceWords::pids(group.rows),
                .memory = holding.size,
                .evidence = unused + (compressed ? "with " + AdviceWords::bytes(holding.compressed, scene) +
                                                       " of its " + size + " compressed."
                                                 : "using " + size + "."),
                .action = first.appID ? RuleAction::relaunch : RuleAction::terminate,
                .rule = AdviceWords::proposed(verb + name + " when idle", first,
                                              {.unusedMinutes = compressed ? ruleMinutesWhenTight : ruleMinutes}),
                .cpu = std::nullopt});
}

}  // namespace

void findIdle(Advice& advice) {
    const auto& scene = advice.scene;
    const RowGroups groups(advice.eligible(), appendGroup);
    const auto found = groups.sorted([&](RowSpan rows) {
        const auto holding = holdingOf(rows, scene.now);
        return isMostlyCompressed(holding, scene.memory) || isLarge(holding, scene.memory);
    });
    for (const auto& group : found) addIdle(advice, group);
}

}  // namespace tolvane::Detectors
