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
    /// As people call it.
    std::string title;
    std::vector<Pid> pids;
    /// Set when the target is an application with its helpers: force quit then goes through the desktop.
    std::optional<std::string> appPath = {};
};

using RunningApps = std::vector<std::shared_ptr<RunningApplication>>;

/// Does what rules, suggestions and menus ask, and says what came of it. Each act works on the processes of the latest
/// sample and on nothing else: pids that the sample does not hold are passed over, and a pid that another process has
/// taken meanwhile is left alone.
///
/// Main thread. Acts are coroutines that wait on the host's clock. Once `tasks` is cancelled, each ends at once with
/// `Outcome::Kind::cancelled` and touches nothing more; whoever awaits one must do the same.
class Acts {
public:
    /// All of them outlive this object.
    Acts(Host& host, ActState& state, BackgroundJobs& background, const CancelSource& tasks);

    QCoro::Task<Outcome> perform(RuleAction action, ActTarget target);

    // Processes.

    /// Asks them to end, and kills after ten seconds what is left.
    QCoro::Task<Outcome> terminate(ActTarget target);
    /// Ends them without asking, and looks a second later what has gone. One outcome per target, in their order;
    /// empty when cancelled.
    QCoro::Task<std::vector<Outcome>> forceQuit(std::vector<ActTarget> targets);
    /// Succeeds when at least one of the processes is at background priority now.
    Outcome lowerPriority(const ActTarget& target);
    /// Gives back what this program took; other pids are passed over.
    void restorePriority(const std::vector<Pid>& pids);
    void restoreAllPriorities();

    // Applications.

    /// Asks the applications behind the processes to quit, and gives them ten seconds.
    QCoro::Task<Outcome> quit(ActTarget target);
    /// Asks the applications behind the processes to quit and starts the first of them again.
    QCoro::Task<Outcome> relaunch(ActTarget target);
    /// The running applications behind the processes, with instances that are not among them.
    RunningApps runningApps(const std::vector<Pid>& pids) const;

    // Projects.

    /// Ends the project's processes, then stops its containers. The outcome is that of the processes.
    QCoro::Task<Outcome> stop(ProjectGroup group);
    /// Remembers how the project was started, then stops it.
    QCoro::Task<Outcome> park(ProjectGroup group);
    /// Starts a parked project's commands and containers. It is parked no more, whatever comes of it.
    QCoro::Task<Outcome> startAgain(ParkedProject project);
    /// Where the output of a project's restarted commands goes.
    std::string projectLog(const std::string& root) const;

private:
    std::vector<Incarnation> incarnationsOf(const std::vector<Pid>& pids) const;
    void send(Signal signal, const std::vector<Incarnation>& processes) const;
    QCoro::Task<WaitEnd> askToQuit(RunningApps apps, Seconds patience);
    /// Whether the client did it; nullopt when cancelled.
    QCoro::Task<std::optional<bool>> performOnContainers(std::string verb, std::vector<std::string> ids);

    Host& host_;
    ActState& state_;
    BackgroundJobs& background_;
    const CancelSource& tasks_;
};

}  // namespace tolvane
