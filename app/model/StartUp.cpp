#include <cstdint>
#include <limits>
#include <utility>

#include "app/demo/Demo.h"
#include "app/model/AppModelPrivate.h"
#include "app/preferences/AppPreferences.h"
#include "app/rows/AppNames.h"
#include "core/advisor/AdviceScene.h"

namespace tolvane {

AppModel::Private::Private(AppModel& owner, ModelState& owned, Host& machine, Windows& ownWindows, bool isDemo,
                           const ExecutorFactory& makeExecutor)
    : model(owner),
      state(owned),
      host(machine),
      windows(ownWindows),
      demo(isDemo),
      names(AppNames::rowNames(*machine.applications, machine.folders->home())),
      store(machine.folders->applicationSupport() + "/Tolvane"),
      sampler(std::make_unique<Sampler>(machine, makeExecutor())),
      background(makeExecutor),
      acts(machine, *this, background, tasks) {}

void AppModel::Private::start() {
    load();
    saveOnAssignment();
    if (demo) showDemo();
    advisor.hybrid = CoreLayout::read(*host.machine).efficiency > 0;
    watchActivations();
    watchWindows();
    watchPressure();
    restartLoop();
}

void AppModel::Private::load() {
    const auto& preferences = *host.preferences;
    state.snapshot.set({.date = host.clock->now()});
    state.rulesPaused.set(AppPreferences::rulesPaused.in(preferences));
    state.backupToSyncFolder.set(AppPreferences::backupToSyncFolder.in(preferences));
    state.hiddenSuggestions.set(
        preferences.get<PreferenceDates>(AppPreferences::hiddenSuggestions).value_or(PreferenceDates{}));
    state.rules.set(store.loadRules());
    state.moments.set(store.loadHistory(host.clock->now()));
    state.parked.set(store.loadParked());
    state.activity.set(store.loadActivity(std::numeric_limits<std::int64_t>::max()));
}

/// Assigns like any other change does: from now on the stored files hold the demo's data.
void AppModel::Private::showDemo() {
    auto world = Demo::state(host.clock->now(), {.home = host.folders->home(), .uid = host.uid});
    state.snapshot.set(std::move(world.snapshot));
    state.history.set(std::move(world.history));
    state.loadHistory.set(std::move(world.loadHistory));
    state.moments.set(std::move(world.moments));
    state.rules.set(std::move(world.rules));
    state.activity.set(std::move(world.activity));
    state.parked.set(std::move(world.parked));
    state.containers.set(std::move(world.containers));
    state.branches.set(std::move(world.branches));
    state.ports.set(std::move(world.ports));
    state.swapGrowth.set(world.swapGrowth);
    state.selectedRows.set(std::move(world.selectedRows));
    state.memoryTight.set(true);
    adviseInDemo();
}

/// The suggestions that six hours of sampling would have led to; a demo has no ticks that make them.
void AppModel::Private::adviseInDemo() {
    const auto now = model.snapshot->date;
    advisor = Demo::advisor(now, {.home = host.folders->home(), .uid = host.uid});
    const auto seen = model.world();
    state.suggestions.set(advisor.suggestions({.world = seen,
                                               .memory = model.snapshot->memory,
                                               .now = now,
                                               .ports = [this](const std::vector<Pid>&) { return *model.ports; },
                                               .locale = "en_US",
                                               .managed = *model.servicePIDs,
                                               .simulatorName = Demo::simulatorName}));
}

/// Called after loading, so that loading writes nothing back: a damaged file stays as it is until the user changes its
/// contents.
void AppModel::Private::saveOnAssignment() {
    state.rules.setEffect([this](const auto& latest) {
        store.saveRules(latest);
        backUpRules();
    });
    state.parked.setEffect([this](const auto& latest) { store.saveParked(latest); });
    auto& preferences = *host.preferences;
    state.rulesPaused.setEffect(
        [&preferences](bool paused) { AppPreferences::rulesPaused.store(preferences, paused); });
    state.backupToSyncFolder.setEffect([this, &preferences](bool wanted) {
        AppPreferences::backupToSyncFolder.store(preferences, wanted);
        backUpRules();
    });
    state.hiddenSuggestions.setEffect(
        [&preferences](const PreferenceDates& hidden) { preferences.set(AppPreferences::hiddenSuggestions, hidden); });
}

void AppModel::Private::watchActivations() {
    activationEvents =
        host.frontmost->onActivation([this](std::string appPath) { noteActivation(std::move(appPath)); });
    // The application in front was activated before this subscription began.
    if (auto front = host.frontmost->current()) noteActivation(std::move(front->appPath));
}

void AppModel::Private::noteActivation(std::string appPath) {
    if (appPath.empty()) return;
    pendingActivations.push_back({.appPath = std::move(appPath), .date = host.clock->now()});
}

void AppModel::Private::watchWindows() {
    windowEvents = windows.onChange([this] { updateVisibility(); });
}

void AppModel::Private::watchPressure() {
    pressureEvents = host.pressure->onPressure([this] { restartLoop(); });
}

}  // namespace tolvane
