#include "app/screens/processes/RowActs.h"

#include <algorithm>
#include <array>
#include <utility>

#include "app/screens/processes/RowProcesses.h"

namespace tolvane {

namespace {

/// What menus ask that rules can ask too.
constexpr std::array<std::pair<ProcessAction, RuleAction>, 4> shared = {{
    {ProcessAction::quit, RuleAction::quit},
    {ProcessAction::relaunch, RuleAction::relaunch},
    {ProcessAction::terminate, RuleAction::terminate},
    {ProcessAction::lowerPriority, RuleAction::lowerPriority},
}};

void tellFailure(const std::weak_ptr<RowActs::Report>& failed, const Outcome& outcome) {
    const auto report = failed.lock();
    if (outcome.failed && report && *report) (*report)(outcome);
}

}  // namespace

RowActs::RowActs(AppModel& model, Report failed)
    : model_(model), failed_(std::make_shared<Report>(std::move(failed))) {}

void RowActs::perform(ProcessAction action, const TableRow& row) {
    if (action == ProcessAction::forceQuit) return forceQuit({row});
    auto target = targetOf(row);
    if (action == ProcessAction::restorePriority) return model_.acts().restorePriority(target.pids);
    const auto* asked = std::ranges::find(shared, action, &std::pair<ProcessAction, RuleAction>::first);
    if (asked == shared.end()) return;
    static_cast<void>(report(model_.acts().perform(asked->second, std::move(target)), failed_));
}

void RowActs::forceQuit(const std::vector<TableRow>& rows) {
    std::vector<ActTarget> targets;
    for (const auto& row : rows) targets.push_back(targetOf(row));
    static_cast<void>(reportAll(model_.acts().forceQuit(std::move(targets)), failed_));
}

ActTarget RowActs::targetOf(const TableRow& row) const {
    auto present = RowProcesses::present(row, model_.snapshot->rows);
    return {.title = std::move(present.title), .pids = std::move(present.pids), .appPath = std::move(present.appPath)};
}

QCoro::Task<> RowActs::report(QCoro::Task<Outcome> act, WeakReport failed) { tellFailure(failed, co_await act); }

QCoro::Task<> RowActs::reportAll(QCoro::Task<std::vector<Outcome>> acts, WeakReport failed) {
    const auto outcomes = co_await acts;
    for (const auto& outcome : outcomes) tellFailure(failed, outcome);
}

}  // namespace tolvane
