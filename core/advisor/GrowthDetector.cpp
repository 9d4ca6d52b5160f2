#include <algorithm>
#include <string>
#include <utility>

#include "core/advisor/Advice.h"
#include "core/advisor/AdviceWords.h"

namespace tolvane::Detectors {

namespace {

constexpr unsigned megabyteShift = 20;
constexpr std::int64_t limitStep = 512;
/// Caps the rate before it becomes an integer; far above any real rate.
constexpr double mostBytes = 1e18;

std::optional<Advisor::Growth> growthOf(const ProcRow& row, const Advisor& advisor) {
    const auto track = advisor.tracks.find(row.id());
    if (track == advisor.tracks.end() || track->second.start != row.sample.startTime) return std::nullopt;
    return Advisor::growth(track->second.points, track->second.start);
}

/// The whole application, even if only one of its processes grows.
RowList groupOf(const ProcRow& row, const RowList& eligible) {
    if (!row.appID) return {&row};
    RowList group;
    std::ranges::copy_if(eligible, std::back_inserter(group),
                         [&](const ProcRow* each) { return each->appID == row.appID; });
    return group;
}

/// The next multiple of `limitStep` above today's size.
std::int64_t limitFor(std::uint64_t memory) {
    return static_cast<std::int64_t>(memory >> megabyteShift) / limitStep * limitStep + limitStep;
}

std::string evidenceOf(const Advisor::Growth& growth, const AdviceScene& scene) {
    const auto perHour = static_cast<std::uint64_t>(std::min(growth.perHour, mostBytes));
    return "Grew by " + AdviceWords::bytes(growth.total, scene) + " in " + AdviceWords::duration(growth.span, scene) +
           ", about " + AdviceWords::bytes(perHour, scene) + " an hour.";
}

void addGrowing(Advice& advice, const ProcRow& row, const Advisor::Growth& growth) {
    const auto group = groupOf(row, advice.eligible());
    const auto memory = AdviceWords::footprint(group);
    const auto name = AdviceWords::name(row);
    const std::string verb = row.appID ? "Restart " : "Stop ";
    advice.add({.id = "growing|" + AdviceWords::groupName(row),
                .kind = Suggestion::Kind::growing,
                .title = name,
                .appPath = row.appPath ? std::optional(row.appPath->str()) : std::nullopt,
                .pids = AdviceWords::pids(group),
                .memory = memory,
                .evidence = evidenceOf(growth, advice.scene),
                .action = row.appID ? RuleAction::relaunch : RuleAction::terminate,
                .rule = AdviceWords::proposed(verb + name + " when it grows", row, {.memoryMB = limitFor(memory)}),
                .cpu = std::nullopt});
}

}  // namespace

void findGrowing(Advice& advice) {
    std::vector<std::pair<const ProcRow*, Advisor::Growth>> growing;
    for (const auto* row : advice.eligible()) {
        if (advice.isClaimed(*row)) continue;
        if (const auto growth = growthOf(*row, advice.advisor)) growing.emplace_back(row, *growth);
    }
    std::ranges::stable_sort(growing, std::ranges::greater{},
                             [](const auto& each) { return each.first->sample.footprint; });
    for (const auto& [row, growth] : growing) {
        if (!advice.isClaimed(*row)) addGrowing(advice, *row, growth);
    }
}

}  // namespace tolvane::Detectors
