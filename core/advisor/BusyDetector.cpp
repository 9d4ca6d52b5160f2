#include <string>
#include <utility>
#include <vector>

#include "core/advisor/Advice.h"
#include "core/advisor/AdviceWords.h"
#include "core/words/Words.h"

namespace tolvane::Detectors {

namespace {

/// An application used this recently is allowed to be busy.
constexpr Seconds grace{900};
/// Three busy intervals need four dates.
constexpr std::size_t leastDates = 4;

void appendGroup(const ProcRow& row, std::string& text) {
    if (row.appID) {
        text.append("app|").append(row.appID->view());
    } else {
        text.append("pid|").append(std::to_string(row.id()));
    }
}

std::optional<Advisor::Busy> busyTime(RowSpan rows, const Advice& advice) {
    if (rows.front()->appID && AdviceWords::idleTime(rows, advice.scene.now) < grace) return std::nullopt;
    std::vector<const Advisor::CPUTrack*> tracks;
    for (const auto* row : rows) {
        const auto track = advice.advisor.cpuTracks.find(row->id());
        if (track == advice.advisor.cpuTracks.end() || track->second.start != row->sample.startTime) continue;
        tracks.push_back(&track->second);
    }
    return tracks.empty() ? std::nullopt : Advisor::busy(tracks, advice.advisor.cpuDates);
}

std::string ending(const ProcRow& first) {
    if (first.appID) return " while in the background.";
    return first.sample.ppid == 1 && first.project ? ". Its terminal is gone." : ".";
}

std::string evidenceOf(const Advisor::Busy& busy, const ProcRow& first, const Advice& advice) {
    const auto kind = advice.advisor.hybrid ? std::optional<std::string_view>("performance") : std::nullopt;
    return "Used about " + Words::cores(busy.percent, kind, advice.scene.locale) + " for the last " +
           AdviceWords::duration(busy.span, advice.scene) + ending(first);
}

void addBusy(Advice& advice, RowSpan rows, const Advisor::Busy& busy) {
    const auto& first = *rows.front();
    advice.add({.id = "busy|" + AdviceWords::groupName(first),
                .kind = Suggestion::Kind::busy,
                .title = AdviceWords::name(first),
                .appPath = first.appPath ? std::optional(first.appPath->str()) : std::nullopt,
                .pids = AdviceWords::pids(rows),
                .memory = AdviceWords::footprint(rows),
                .evidence = evidenceOf(busy, first, advice),
                .action = first.appID ? RuleAction::relaunch : RuleAction::terminate,
                .rule = std::nullopt,
                .cpu = busy.percent});
}

}  // namespace

void findBusy(Advice& advice) {
    if (advice.advisor.cpuDates.size() < leastDates) return;
    RowList candidates;
    for (const auto* row : advice.eligible()) {
        if (!advice.isClaimed(*row)) candidates.push_back(row);
    }
    const RowGroups groups(candidates, appendGroup);
    for (const auto& group : groups.sorted([&](RowSpan rows) { return busyTime(rows, advice).has_value(); })) {
        addBusy(advice, group.rows, *busyTime(group.rows, advice));
    }
}

}  // namespace tolvane::Detectors
