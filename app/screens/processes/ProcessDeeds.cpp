#include "app/screens/processes/ProcessDeeds.h"

#include <utility>

#include "app/acts/LivingTargets.h"
#include "app/acts/QuitWait.h"
#include "app/screens/processes/RowProcesses.h"
#include "app/tasks/Sleep.h"

namespace tolvane {

namespace {

/// After a kill: enough for the kernel to clear away what is large.
constexpr Seconds untilCleared{1.0};

void tell(const std::weak_ptr<ProcessDeeds::Told>& told, const Outcome& outcome) {
    if (const auto alive = told.lock(); alive && *alive) (*alive)(outcome);
}

}  // namespace

ProcessDeeds::ProcessDeeds(AppModel& model, Told failed)
    : model_(model), failed_(std::make_shared<Told>(std::move(failed))) {}

void ProcessDeeds::carryOut(ProcessAction action, const TableRow& shown) {
    const TableRow line = RowProcesses::present(shown, model_.snapshot->rows);
    switch (action) {
        case ProcessAction::quit:
            static_cast<void>(quit(&model_, line, failed_, waits_.token()));
            break;
        case ProcessAction::relaunch:
            static_cast<void>(relaunch(&model_, line, failed_));
            break;
        case ProcessAction::terminate:
            static_cast<void>(terminate(&model_, line, failed_));
            break;
        case ProcessAction::lowerPriority:
        case ProcessAction::restorePriority:
            changePriority(action, line);
            break;
        case ProcessAction::forceQuit:
            forceQuit({shown});
            break;
        case ProcessAction::addRule:
        case ProcessAction::copyCommand:
        case ProcessAction::showWorkingFolder:
            break;
    }
}

void ProcessDeeds::changePriority(ProcessAction action, const TableRow& line) {
    if (action == ProcessAction::restorePriority) {
        model_.restorePriority(line.pids);
    } else if (!model_.lowerPriority(line.pids)) {
        tell(failed_, Outcome::of(Outcome::Kind::notLowered, line.title));
    }
}

QCoro::Task<> ProcessDeeds::quit(AppModel* model, TableRow line, WeakTold failed, std::stop_token cancellation) {
    auto apps = model->runningApps(line.pids);
    if (apps.empty()) {
        tell(failed, Outcome::of(Outcome::Kind::notRunning, line.title));
        co_return;
    }
    const bool done = co_await quitAndWait(*model->host().clock, std::move(apps), quitPatience, cancellation);
    if (!done && !cancellation.stop_requested()) tell(failed, Outcome::of(Outcome::Kind::askedToQuit, line.title));
}

QCoro::Task<> ProcessDeeds::relaunch(AppModel* model, TableRow line, WeakTold failed) {
    const auto outcome = Outcome::ofRelaunch(co_await model->relaunch(line.pids), line.title);
    if (outcome.kind == Outcome::Kind::notRelaunched) tell(failed, outcome);
}

QCoro::Task<> ProcessDeeds::terminate(AppModel* model, TableRow line, WeakTold failed) {
    const bool gone = co_await model->terminate(line.pids, false);
    if (!gone) tell(failed, Outcome::of(Outcome::Kind::stillRunning, line.title));
}

void ProcessDeeds::forceQuit(const std::vector<TableRow>& shown) {
    std::vector<TableRow> lines;
    for (const auto& each : shown) lines.push_back(RowProcesses::present(each, model_.snapshot->rows));
    model_.forceQuit(lines);
    static_cast<void>(lookAfter(&model_, std::move(lines), failed_, waits_.token()));
}

/// A kill does not tell whether it was allowed: who lives on tells.
QCoro::Task<> ProcessDeeds::lookAfter(AppModel* model, std::vector<TableRow> lines, WeakTold failed,
                                      std::stop_token cancellation) {
    const auto awoken = co_await Sleep(*model->host().clock, untilCleared, Seconds{0}, cancellation);
    if (awoken == Awoken::cancelled) co_return;
    for (const auto& line : lines) {
        LivingTargets targets(model->host(), RowProcesses::lives(line));
        if (targets.anyAlive()) tell(failed, Outcome::of(Outcome::Kind::stillRunning, line.title));
    }
}

}  // namespace tolvane
