#pragma once

#include <QCoroTask>
#include <memory>
#include <optional>
#include <vector>

#include "app/Activation.h"
#include "app/AppModel.h"
#include "app/CancelSource.h"
#include "app/DueDecisions.h"
#include "app/Line.h"
#include "app/Sampler.h"
#include "core/advisor/Advisor.h"
#include "core/storage/Store.h"

namespace tolvane {

/// What the model keeps to itself, and the steps of its start and of its tick. Each group is defined in the file
/// named above it. Main thread.
///
/// Coroutines: every wait belongs to a source that ends with the model, and a coroutine that is woken by that end
/// returns without touching the model. So none is ever resumed into a model that is gone, and none is left over.
struct AppModel::Private {
    Private(AppModel& model, Host& host, Windows& windows, bool demo, const ExecutorFactory& makeExecutor);

    // StartUp.cpp
    void start();
    void load();
    void saveOnAssignment();
    void showDemo();
    void adviseInDemo();
    void watchActivations();
    void watchWindows();
    void watchPressure();
    void noteActivation(std::string bundlePath);

    // Loop.cpp
    void restartLoop();
    void updateVisibility();
    QCoro::Task<> runLoop(std::stop_token cancellation);
    Seconds interval() const;

    // Tick.cpp
    QCoro::Task<> tick();
    void judgeSwap();
    void reviewPriorities();
    void recordTracks();
    void applyRules();

    // CarryOut.cpp
    QCoro::Task<> carryOut(Decision decision);

    // RuleChanges.cpp
    void backUpRules();

    // Warnings.cpp
    void warnAboutSwap();
    void noticeSuggestions();

    // RecordHistory.cpp
    void recordHistory();

    // RecordMoment.cpp
    void recordMoment();

    AppModel& model;
    Host& host;
    Windows& windows;
    const bool demo;
    const LineNames names;
    const Store store;
    Advisor advisor;
    DueDecisions due;
    /// When the present spell of memory pressure began.
    std::optional<Date> pressureSince;
    /// Not yet given to the sampler.
    std::vector<Activation> pendingActivations;
    /// A window of this program can be seen.
    bool windowVisible = false;

    std::unique_ptr<Sampler> sampler;
    /// For what blocks and is not sampling: child processes, look-ups of ports.
    std::unique_ptr<Executor> background;
    /// Of everything that goes on beside the loop; ends with the model.
    CancelSource tasks;
    /// Of the loop that is in force; cancelled ones finish the tick that they are in.
    CancelSource loop;
    /// Last, so that no event comes any more while the rest goes.
    Subscription activationEvents;
    Subscription windowEvents;
    Subscription pressureEvents;
};

}  // namespace tolvane
