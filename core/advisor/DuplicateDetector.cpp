#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "core/advisor/Advice.h"
#include "core/advisor/AdviceWords.h"

namespace tolvane::Detectors {

namespace {

/// Copies have exactly the same command line in the same project.
void appendCommand(const ProcRow& row, std::string& text) {
    text += row.project->view();
    text += '|';
    for (std::size_t index = 0; index < row.sample.args.size(); ++index) {
        if (index > 0) text += '\0';
        text += row.sample.args[index];
    }
}

/// Copies that share a parent are workers of one server.
bool shareAParent(RowSpan rows) {
    return std::ranges::all_of(rows, [&](const ProcRow* row) { return row->sample.ppid == rows.front()->sample.ppid; });
}

const ProcRow* newestOf(const RowList& rows) {
    return *std::ranges::max_element(rows, {}, [](const ProcRow* row) { return row->sample.startTime; });
}

std::string evidenceOf(const RowList& copies, const Advice& advice) {
    std::set<int> ports;
    for (const auto* row : copies) ports.insert(advice.portsOf(*row).begin(), advice.portsOf(*row).end());
    return std::to_string(copies.size()) + " copies are running, on " +
           AdviceWords::ports({ports.begin(), ports.end()}, advice.scene) + ". The newest one stays.";
}

void addCopies(Advice& advice, const RowList& copies) {
    const auto* newest = newestOf(copies);
    RowList others;
    std::ranges::remove_copy(copies, std::back_inserter(others), newest);
    advice.add({.id = "duplicate|" + AdviceWords::key(*newest),
                .kind = Suggestion::Kind::duplicate,
                .title = AdviceWords::label(*newest),
                .appPath = std::nullopt,
                .pids = AdviceWords::pids(others),
                .memory = AdviceWords::footprint(others),
                .evidence = evidenceOf(copies, advice),
                .action = RuleAction::terminate,
                .rule = std::nullopt,
                .cpu = std::nullopt},
               newest->id());
}

}  // namespace

void findDuplicates(Advice& advice) {
    RowList candidates;
    for (const auto* row : advice.loose()) {
        if (row->project && !advice.isClaimed(*row)) candidates.push_back(row);
    }
    const RowGroups groups(candidates, appendCommand);
    const auto copied = groups.sorted([](RowSpan rows) { return rows.size() >= 2 && !shareAParent(rows); });
    RowList asked;
    for (const auto& group : copied) asked.insert(asked.end(), group.rows.begin(), group.rows.end());
    advice.askPorts(asked);
    for (const auto& group : copied) {
        RowList listening;
        std::ranges::copy_if(group.rows, std::back_inserter(listening),
                             [&](const ProcRow* row) { return !advice.portsOf(*row).empty(); });
        if (listening.size() >= 2 && !shareAParent(listening)) addCopies(advice, listening);
    }
}

}  // namespace tolvane::Detectors
