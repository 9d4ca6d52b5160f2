#pragma once

#include <QCoroTask>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/acts/ActState.h"
#include "app/acts/Outcome.h"
#include "app/tasks/BackgroundJobs.h"
#include "app/tasks/CancelSource.h"
#include "app/tasks/Wait.h"
#include "core/projects/Projects.h"
#include "core/rules/Rule.h"
#include "platform/Host.h"

namespace tolvane {

/// What an act is done to.
struct ActTarget {
    /// The name shown to the user.
    std::string title;
    std::vector<Pid> pids;
    /// Set when the target is an application with its helpers: force quit then goes through the desktop.
    std::optional<std::string> appPath = {};
};

using RunningApps = std::vector<std::shared_ptr<RunningApplication>>;

/// Does what rules, suggestions and menus ask, and returns the outcome. Each act works only on processes of the latest
/// sample: it skips pids that the sample does not hold, and leaves a process alone that has taken over a pid since.
///
/// Main thread. Acts are coroutines that wait on the host's clock. Once `tasks` is cancelled, each ends at once with
/// `Outcome::Kind::cancelled` and touches nothing more; its caller must do the same.
class Acts {
public:
    /// All of them outlive this object.
    Acts(Host& host, ActState& state, BackgroundJobs& background, const CancelSource& tasks);

    QCoro::Task<Outcome> perform(RuleAction action, ActTarget target);

    // Processes.

    /// Asks the processes to end, and kills those that are left after ten seconds.
    QCoro::Task<Outcome> terminate(ActTarget target);
    /// Kills the processes, and checks a second later which are gone. Returns one outcome per target, in their order;
    /// empty when cancelled.
    QCoro::Task<std::vector<Outcome>> forceQuit(std::vector<ActTarget> targets);
    /// Succeeds when at least one of the processes was lowered.
    Outcome lowerPriority(const ActTarget& target);
    /// Restores what this program lowered; skips other pids.
    void restorePriority(const std::vector<Pid>& pids);
    void restoreAllPriorities();

    // Applications.

    /// Asks the applications that own the processes to quit, and waits ten seconds at most.
    QCoro::Task<Outcome> quit(ActTarget target);
    /// Asks the applications that own the processes to quit, then starts the first of them again.
    QCoro::Task<Outcome> relaunch(ActTarget target);
    /// The running applications that own the processes: every instance, also those with none of these processes.
    RunningApps runningApps(const std::vector<Pid>& pids) const;

    // Projects.

    /// Terminates the project's processes, then stops its containers. The outcome is that of the processes.
    QCoro::Task<Outcome> stop(ProjectGroup group);
    /// Records how the project was started, then stops it.
    QCoro::Task<Outcome> park(ProjectGroup group);
    /// Starts a parked project's commands and containers. Afterwards it is no longer parked, even if some did not
    /// start.
    QCoro::Task<Outcome> startAgain(ParkedProject project);
    /// Where the output of a project's restarted commands goes.
    std::string projectLog(const std::string& root) const;

private:
    std::vector<Incarnation> incarnationsOf(const std::vector<Pid>& pids) const;
    void send(Signal signal, const std::vector<Incarnation>& processes) const;
    QCoro::Task<WaitEnd> askToQuit(RunningApps apps, Seconds patience);
    /// Whether the Docker client succeeded; nullopt when cancelled.
    QCoro::Task<std::optional<bool>> performOnContainers(std::string verb, std::vector<std::string> ids);

    Host& host_;
    ActState& state_;
    BackgroundJobs& background_;
    const CancelSource& tasks_;
};

}  // namespace tolvane
