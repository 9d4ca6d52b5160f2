#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "app/acts/Outcome.h"
#include "app/model/AppSection.h"
#include "app/model/Observed.h"
#include "app/rows/TableRow.h"
#include "app/sampling/HistoryPoint.h"
#include "app/sampling/ProcessHistory.h"
#include "app/sampling/Snapshot.h"
#include "app/tasks/Executor.h"
#include "app/tasks/PortLookup.h"
#include "core/advisor/Suggestion.h"
#include "core/history/Moment.h"
#include "core/projects/Docker.h"
#include "core/projects/GitBranch.h"
#include "core/projects/ParkedProject.h"
#include "core/projects/Projects.h"
#include "core/rules/Rule.h"
#include "core/rules/World.h"
#include "core/sampling/Priority.h"
#include "core/storage/ActivityEntry.h"
#include "platform/Host.h"
#include "platform/Windows.h"

namespace QCoro {
template <typename Result>
class Task;
}

namespace tolvane {

class Acts;
struct Store;

/// The one observable object that all screens read and all actions go through. Confined to the main thread; the
/// sampling that it waits for runs on the sampler's own. Lives until the program ends.
class AppModel {
public:
    /// Starts everything: loads what is stored, registers for the host's events, runs the loop (a demo has none).
    /// `host` and `windows` outlive the model. `makeExecutor` gives it its threads; tests bring their own.
    AppModel(Host& host, Windows& windows, bool demo, const ExecutorFactory& makeExecutor = makeWorkerThread);
    /// Ends the loop, waits for a sample that runs, and gives back every priority that is on loan.
    ~AppModel();
    AppModel(const AppModel&) = delete;
    AppModel& operator=(const AppModel&) = delete;

    /// The latest sample.
    Observed<Snapshot> snapshot;
    /// Recent readings of each sizeable process; `historyFor` gives them.
    Observed<ProcessHistory> history;
    /// The last hour of CPU load, oldest first.
    Observed<std::vector<LoadPoint>> loadHistory;
    Observed<std::vector<Rule>> rules;
    /// Newest first.
    Observed<std::vector<ActivityEntry>> activity;
    Observed<bool> rulesPaused;
    Observed<AppSection> section;
    /// The rule that the editor shows.
    Observed<std::optional<UUID>> selectedRule;
    /// Ids of lines selected in the processes table.
    Observed<std::set<std::string>> selectedRows;
    /// The import panel is up.
    Observed<bool> importing;
    /// Rules that wait in the export panel.
    Observed<std::optional<std::vector<Rule>>> exporting;
    Observed<std::optional<std::string>> importMessage;
    Observed<bool> backupToSyncFolder;
    Observed<std::optional<std::string>> backupError;
    /// The advice of the latest tick, hidden ones included.
    Observed<std::vector<Suggestion>> suggestions;
    /// A day of history, oldest first.
    Observed<std::vector<Moment>> moments;
    /// Bytes over the last quarter of an hour.
    Observed<std::optional<std::int64_t>> swapGrowth;
    Observed<std::optional<std::uint64_t>> readBack;
    Observed<bool> memoryTight;
    Observed<std::map<Pid, Lowered>> lowered;
    Observed<std::vector<Container>> containers;
    /// By project root.
    Observed<std::map<std::string, ProjectBranch>> branches;
    /// TCP ports that a process listens on.
    Observed<std::map<Pid, std::vector<int>>> ports;
    /// Processes that the service manager keeps.
    Observed<std::set<Pid>> servicePIDs;
    Observed<Date> servicesChecked;
    /// The most recently parked first.
    Observed<std::vector<ParkedProject>> parked;
    /// Each increment asks for the main window.
    Observed<int> windowRequest;
    /// Suggestion keys and until when they stay hidden.
    Observed<std::map<std::string, Date, std::less<>>> hiddenSuggestions;

    bool demo() const;
    /// All of the host, which acting needs. Screens get by on what follows.
    Host& host() const;
    /// Ends, restarts and lowers what the latest sample holds.
    Acts& acts() const;

    // What screens ask of the host.

    Date now() const;
    /// For waits.
    Clock& clock() const;
    Preferences& preferences() const;
    Desktop& desktop() const;
    /// Null where the host has none.
    LoginItem* loginItem() const;
    /// The user's home folder.
    std::string home() const;
    /// The user's, as an ICU identifier.
    const std::string& locale() const;
    /// This program's own process, and the user it runs as.
    Pid selfPID() const;
    std::uint32_t uid() const;
    /// False where the session does not report which application is in front.
    bool knowsFrontmost() const;
    /// Reads the ports of one process at a time. The model outlives it.
    PortLookup portLookup() const;

    /// The folder of files that the model writes through to.
    const Store& store() const;
    /// The names that every table of processes shares.
    const RowNames& rowNames() const;
    /// What rules and advice may see now.
    World world() const;
    /// Recent readings of the processes together, oldest first: figures of one tick are summed.
    std::vector<HistoryPoint> historyFor(const std::vector<Pid>& pids) const;
    /// Shows a section in the main window, opening it when need be.
    void open(AppSection section);

    // Words to the user.

    void notify(const std::string& title, const std::string& body, std::optional<AppSection> opening);
    void requestNotificationPermission();

    // Rules as a list.

    void addRule(Rule rule);
    void deleteRules(const std::set<UUID>& ids);
    /// Adds the rules of a file, and says in `importMessage` what came of it.
    void importRules(const std::string& path);
    /// Where the backup belongs; none when nothing syncs.
    std::optional<std::string> backupPath() const;
    /// Replaces the rules with the backup's; what fails is told in `backupError`.
    void restoreBackup();

    // Advice.

    std::vector<Suggestion> visibleSuggestions() const;
    void hide(const Suggestion& suggestion, Date until);
    /// Does the suggestion's own action, or the given one. Gives what did not come off.
    QCoro::Task<std::optional<Outcome>> act(Suggestion suggestion, std::optional<RuleAction> action = std::nullopt);

    // Projects.

    /// Reads branches, containers and ports in the background. One run at a time is the caller's business.
    QCoro::Task<void> refreshProjects();
    /// Starts a parked project again, and notifies when not all of it did start.
    QCoro::Task<void> startAgain(ParkedProject project);

    /// What must not be left undone when the program ends in whatever way: gives back every priority that is on loan.
    /// Can be called more than once; the destructor calls it too.
    void prepareToQuit();

private:
    static std::unique_ptr<Executor> makeWorkerThread();

    struct Private;
    std::unique_ptr<Private> d_;
};

}  // namespace tolvane
