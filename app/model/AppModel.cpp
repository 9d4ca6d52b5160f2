#include "app/model/AppModel.h"

#include <utility>

#include "app/model/AppModelPrivate.h"
#include "app/tasks/WorkerThread.h"

namespace tolvane {

AppModel::AppModel(Host& host, Windows& windows, bool demo, const ExecutorFactory& makeExecutor,
                   std::unique_ptr<ModelState> state)
    : state_(std::move(state)), d_(std::make_unique<Private>(*this, *state_, host, windows, demo, makeExecutor)) {
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

void AppModel::forgetParked(const std::string& root) {
    auto left = *parked;
    std::erase_if(left, [&root](const ParkedProject& each) { return each.root == root; });
    state_->parked.set(std::move(left));
}

void AppModel::clearActivity() {
    store().clearActivity();
    state_->activity.set({});
}

}  // namespace tolvane
