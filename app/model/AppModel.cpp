#include "app/model/AppModel.h"

#include <utility>

#include "app/model/AppModelPrivate.h"
#include "app/preferences/AppPreferences.h"
#include "app/tasks/WorkerThread.h"

namespace tolvane {

AppModel::AppModel(Host& host, Windows& windows, bool demo, const ExecutorFactory& makeExecutor)
    : snapshot(Snapshot{.date = host.clock->now()}),
      rulesPaused(AppPreferences::rulesPaused.in(*host.preferences)),
      backupToSyncFolder(AppPreferences::backupToSyncFolder.in(*host.preferences)),
      servicesChecked(distantPast),
      hiddenSuggestions(
          host.preferences->get<PreferenceDates>(AppPreferences::hiddenSuggestions).value_or(PreferenceDates{})),
      d_(std::make_unique<Private>(*this, host, windows, demo, makeExecutor)) {
    d_->start();
}

AppModel::~AppModel() {
    d_->loop.cancel();
    d_->tasks.cancel();
    host().children->end();
    d_->background.end();
    d_->sampler.reset();
    prepareToQuit();
}

std::unique_ptr<Executor> AppModel::makeWorkerThread() { return std::make_unique<WorkerThread>(); }

bool AppModel::demo() const { return d_->demo; }

Acts& AppModel::acts() const { return d_->acts; }

const Store& AppModel::store() const { return d_->store; }

const RowNames& AppModel::rowNames() const { return d_->names; }

World AppModel::world() const {
    const auto front = host().frontmost->current();
    return {.rows = snapshot->rows,
            .frontmostAppID = front ? front->appID : std::nullopt,
            .claudeWorkers = snapshot->claude,
            .selfPID = selfPID(),
            .uid = uid(),
            .memoryTight = *memoryTight,
            .frontmostKnown = knowsFrontmost()};
}

std::vector<HistoryPoint> AppModel::historyFor(const std::vector<Pid>& pids) const { return history->points(pids); }

void AppModel::prepareToQuit() { d_->acts.restoreAllPriorities(); }

void AppModel::open(AppSection wanted) {
    section.set(wanted);
    windowRequest.set(*windowRequest + 1);
}

}  // namespace tolvane
