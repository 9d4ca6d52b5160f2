#pragma once

#include <QCoroTask>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/acts/Acts.h"
#include "app/model/AppModel.h"
#include "app/model/DueDecisions.h"
#include "app/rows/TableRow.h"
#include "app/sampling/Activation.h"
#include "app/sampling/Sampler.h"
#include "app/tasks/BackgroundJobs.h"
#include "app/tasks/CancelSource.h"
#include "core/advisor/Advisor.h"
#include "core/storage/Store.h"

namespace tolvane {

/// The model's private state, and the steps of its start and of its tick. Each group is defined in the file named above
/// it. Main thread.
///
/// Coroutines: every wait belongs to a source that the model's destructor cancels. A coroutine that is cancelled
/// returns without touching the model, so none resumes after the model is gone, and none leaks.
struct AppModel::Private final : ActState {
    Private(AppModel& model, ModelState& state, Host& host, Windows& windows, bool demo,
            const ExecutorFactory& makeExecutor);

    // StartUp.cpp
    void start();
    void load();
    void saveOnAssignment();
    void showDemo();
    void adviseInDemo();
    void watchActivations();
    void watchWindows();
    void watchPressure();
    void noteActivation(std::string appPath);

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
    /// False when cancelled by the model's end.
    QCoro::Task<bool> askServiceManager();
    void applyRules();

    // DecisionTask.cpp
    QCoro::Task<> carryOut(Decision decision);
    QCoro::Task<Outcome> outcomeOf(const Decision& decision);
    void tell(const Decision& decision, const Outcome& outcome, Date date);
    void record(ActivityEntry entry);

    // RuleChanges.cpp
    void backUpRules();

    // GiveAdvice.cpp
    void giveAdvice();
    std::map<Pid, std::vector<int>> listeningPorts(const std::vector<Pid>& pids);

    // Warnings.cpp
    void warnAboutSwap();
    void noticeSuggestions();
    void keepPressureClock();

    // RecordHistory.cpp
    void recordHistory();

    // RecordMoment.cpp
    void recordMoment();

    // What acts read and change, as properties of the model.
    const std::vector<ProcRow>& rows() const override { return model.snapshot->rows; }
    const std::map<Pid, Lowered>& loans() const override { return *model.lowered; }
    void setLoans(std::map<Pid, Lowered> loans) override { state.lowered.set(std::move(loans)); }
    const std::vector<Container>& containers() const override { return *model.containers; }
    void setContainers(std::vector<Container> containers) override { state.containers.set(std::move(containers)); }
    const std::vector<ParkedProject>& parked() const override { return *model.parked; }
    void setParked(std::vector<ParkedProject> parked) override { state.parked.set(std::move(parked)); }
    void resample() override;

    AppModel& model;
    ModelState& state;
    Host& host;
    Windows& windows;
    const bool demo;
    const RowNames names;
    const Store store;
    Advisor advisor;
    /// For advice, which reads the ports of a few processes on the main thread; created on first use.
    std::unique_ptr<ProcessInspection> portInspection;
    DueDecisions due;
    /// When the present spell of memory pressure began.
    std::optional<Date> pressureSince;
    /// Activations since the latest sample, which the next one takes.
    std::vector<Activation> pendingActivations;
    /// A window of this program is visible.
    bool windowVisible = false;

    std::unique_ptr<Sampler> sampler;
    BackgroundJobs background;
    /// Cancels everything that runs beside the loop; ends with the model.
    CancelSource tasks;
    Acts acts;
    /// Cancels the current loop, which still finishes the tick it is in.
    CancelSource loop;
    /// Declared last, so that no event arrives while the rest is destroyed.
    Subscription activationEvents;
    Subscription windowEvents;
    Subscription pressureEvents;
};

}  // namespace tolvane
