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
#include "app/model/ModelState.h"
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
    /// Declared first: the properties below refer to it.
    const std::unique_ptr<ModelState> state_;

public:
    /// Starts everything: loads what is stored, registers for the host's events, runs the loop (a demo has none).
    /// `host` and `windows` outlive the model. `makeExecutor` gives it its threads; tests bring their own.
    /// `state` holds nothing yet; a test that keeps its address can assign what no verb does.
    AppModel(Host& host, Windows& windows, bool demo, const ExecutorFactory& makeExecutor = makeWorkerThread,
             std::unique_ptr<ModelState> state = std::make_unique<ModelState>());
    /// Ends the loop, waits for a sample that runs, and gives back every priority that is on loan.
    ~AppModel();
    AppModel(const AppModel&) = delete;
    AppModel& operator=(const AppModel&) = delete;

    /// A thread of its own for each.
    static std::unique_ptr<Executor> makeWorkerThread();

    /// The latest sample.
    const Observed<Snapshot>& snapshot = state_->snapshot;
    /// Recent readings of each sizeable process; `historyFor` gives them.
    const Observed<ProcessHistory>& history = state_->history;
    /// The last hour of CPU load, oldest first.
    const Observed<std::vector<LoadPoint>>& loadHistory = state_->loadHistory;
    const Observed<std::vector<Rule>>& rules = state_->rules;
    /// Newest first.
    const Observed<std::vector<ActivityEntry>>& activity = state_->activity;
    const Observed<bool>& rulesPaused = state_->rulesPaused;
    const Observed<AppSection>& section = state_->section;
    /// The rule that the editor shows.
    const Observed<std::optional<UUID>>& selectedRule = state_->selectedRule;
    /// Ids of lines selected in the processes table.
    const Observed<std::set<std::string>>& selectedRows = state_->selectedRows;
    /// The import panel is up.
    const Observed<bool>& importing = state_->importing;
    /// Rules that wait in the export panel.
    const Observed<std::optional<std::vector<Rule>>>& exporting = state_->exporting;
    const Observed<std::optional<std::string>>& importMessage = state_->importMessage;
    const Observed<bool>& backupToSyncFolder = state_->backupToSyncFolder;
    const Observed<std::optional<std::string>>& backupError = state_->backupError;
    /// The advice of the latest tick, hidden ones included.
    const Observed<std::vector<Suggestion>>& suggestions = state_->suggestions;
    /// A day of history, oldest first.
    const Observed<std::vector<Moment>>& moments = state_->moments;
    /// Bytes over the last quarter of an hour.
    const Observed<std::optional<std::int64_t>>& swapGrowth = state_->swapGrowth;
    const Observed<std::optional<std::uint64_t>>& readBack = state_->readBack;
    const Observed<bool>& memoryTight = state_->memoryTight;
    const Observed<std::map<Pid, Lowered>>& lowered = state_->lowered;
    const Observed<std::vector<Container>>& containers = state_->containers;
    /// By project root.
    const Observed<std::map<std::string, ProjectBranch>>& branches = state_->branches;
    /// TCP ports that a process listens on.
    const Observed<std::map<Pid, std::vector<int>>>& ports = state_->ports;
    /// Processes that the service manager keeps.
    const Observed<std::set<Pid>>& servicePIDs = state_->servicePIDs;
    const Observed<Date>& servicesChecked = state_->servicesChecked;
    /// The most recently parked first.
    const Observed<std::vector<ParkedProject>>& parked = state_->parked;
    /// Each increment asks for the main window.
    const Observed<int>& windowRequest = state_->windowRequest;
    /// Suggestion keys and until when they stay hidden.
    const Observed<std::map<std::string, Date, std::less<>>>& hiddenSuggestions = state_->hiddenSuggestions;

    bool demo() const;
    /// Ends, restarts and lowers processes of the latest sample.
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
    /// False on a host without notifications, where `notify` must not be called.
    bool canNotify() const;
    /// Reads the ports of one process at a time. The model outlives it.
    PortLookup portLookup() const;

    /// The folder of files that the model writes through to.
    const Store& store() const;
    /// The names that every table of processes shares.
    const RowNames& rowNames() const;
    /// What rules and advice may see now.
    World world() const;
    /// Recent readings of the processes together, oldest first: values of one tick are summed.
    std::vector<HistoryPoint> historyFor(const std::vector<Pid>& pids) const;

    // What the windows show. None of it is written to a file.

    /// Shows a section in the main window, if that is open.
    void show(AppSection section);
    /// Asks for the main window.
    void openWindow();
    /// Shows a section in the main window, opening it when need be.
    void open(AppSection section);
    /// Shows the rule in the editor; nullopt shows none.
    void selectRule(std::optional<UUID> id);
    /// Selects these rows of the processes table, and no others.
    void selectRows(std::set<std::string> ids);
    /// Asks for the import panel.
    void askImport();
    /// The import panel is gone.
    void endImport();
    /// Asks for the export panel, for these rules.
    void askExport(std::vector<Rule> rules);
    /// The export panel is gone, and the rules no longer wait.
    void endExport();
    /// Clears `importMessage`, which the user has read.
    void dismissImportMessage();

    // Notifications.

    void notify(const std::string& title, const std::string& body, std::optional<AppSection> opening);
    void requestNotificationPermission();

    // Rules as a list. Each change of the list writes the rules file, and the backup where one is wanted.

    /// Adds the rule at the end, and shows it in the editor.
    void addRule(Rule rule);
    /// Puts the rule in the place of the one with its id; does nothing when there is none.
    void replaceRule(Rule rule);
    void deleteRules(const std::set<UUID>& ids);
    /// Holds every rule back, or lets them run again. Stores the preference.
    void pauseRules(bool paused);
    /// Adds the rules of a file, and says in `importMessage` what came of it.
    void importRules(const std::string& path);
    /// Stores the preference, and writes the backup at once when it is wanted.
    void setBackupToSyncFolder(bool wanted);
    /// Where the backup belongs; none when nothing syncs.
    std::optional<std::string> backupPath() const;
    /// Replaces the rules with the backup's; reports a failure in `backupError`.
    void restoreBackup();

    // Advice.

    std::vector<Suggestion> visibleSuggestions() const;
    /// Hides the suggestion until then, and forgets what is hidden no longer. Stores the preference.
    void hide(const Suggestion& suggestion, Date until);
    /// Shows every hidden suggestion again. Stores the preference.
    void showHiddenSuggestions();
    /// Does the suggestion's own action, or the given one. Gives what did not come off.
    QCoro::Task<std::optional<Outcome>> act(Suggestion suggestion, std::optional<RuleAction> action = std::nullopt);

    // Projects.

    /// Reads branches, containers and ports in the background. One run at a time is the caller's business.
    QCoro::Task<void> refreshProjects();
    /// Starts a parked project again, and notifies when some of it did not start.
    QCoro::Task<void> startAgain(ParkedProject project);
    /// Drops the parked project with this root, and writes the file of parked projects.
    void forgetParked(const std::string& root);

    // Activity.

    /// Empties the activity log and its file.
    void clearActivity();

    /// Restores every lowered priority. Must run however the program ends, so the destructor calls it too; calling it
    /// more than once does no harm.
    void prepareToQuit();

private:
    Host& host() const;

    struct Private;
    std::unique_ptr<Private> d_;
};

}  // namespace tolvane
