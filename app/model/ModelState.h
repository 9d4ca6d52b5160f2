#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "app/model/AppSection.h"
#include "app/model/Observed.h"
#include "app/sampling/HistoryPoint.h"
#include "app/sampling/ProcessHistory.h"
#include "app/sampling/Snapshot.h"
#include "core/advisor/Suggestion.h"
#include "core/history/Moment.h"
#include "core/projects/Docker.h"
#include "core/projects/GitBranch.h"
#include "core/projects/ParkedProject.h"
#include "core/rules/Rule.h"
#include "core/sampling/Priority.h"
#include "core/storage/ActivityEntry.h"

namespace tolvane {

/// The write side of the model's stored properties; `AppModel` shows each of them read-only and says what it holds.
/// Only the model has it, and a test that hands in its own. Main thread.
struct ModelState {
    Observed<Snapshot> snapshot;
    Observed<ProcessHistory> history;
    Observed<std::vector<LoadPoint>> loadHistory;
    Observed<std::vector<Rule>> rules;
    Observed<std::vector<ActivityEntry>> activity;
    Observed<bool> rulesPaused;
    Observed<AppSection> section;
    Observed<std::optional<UUID>> selectedRule;
    Observed<std::set<std::string>> selectedRows;
    Observed<bool> importing;
    Observed<std::optional<std::vector<Rule>>> exporting;
    Observed<std::optional<std::string>> importMessage;
    Observed<bool> backupToSyncFolder;
    Observed<std::optional<std::string>> backupError;
    Observed<std::vector<Suggestion>> suggestions;
    Observed<std::vector<Moment>> moments;
    Observed<std::optional<std::int64_t>> swapGrowth;
    Observed<std::optional<std::uint64_t>> readBack;
    Observed<bool> memoryTight;
    Observed<std::map<Pid, Lowered>> lowered;
    Observed<std::vector<Container>> containers;
    Observed<std::map<std::string, ProjectBranch>> branches;
    Observed<std::map<Pid, std::vector<int>>> ports;
    Observed<std::set<Pid>> servicePIDs;
    Observed<Date> servicesChecked{distantPast};
    Observed<std::vector<ParkedProject>> parked;
    Observed<int> windowRequest;
    Observed<std::map<std::string, Date, std::less<>>> hiddenSuggestions;
};

}  // namespace tolvane
