#include "app/screens/rules/RuleSuggestion.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "app/rows/Format.h"
#include "app/screens/rules/RuleConditions.h"
#include "app/screens/rules/RunningApps.h"
#include "base/Paths.h"
#include "core/rules/RuleEngine.h"

namespace tolvane::RuleSuggestions {

namespace {

constexpr std::string_view ownIdentifier = "dev.tolvane.Tolvane";

/// True for this program's own application, whatever name it is installed under.
bool isOwn(const RunningApp& app, const AppModel& model) {
    if (app.id == ownIdentifier) return true;
    return std::ranges::any_of(model.snapshot->rows, [&](const ProcRow& row) {
        return row.id() == model.selfPID() && row.appID && *row.appID == app.id;
    });
}

/// Processes that form one entry because they match the same word of a command line.
struct CommandGroup {
    std::size_t processes = 0;
    std::uint64_t memory = 0;
    std::set<std::string> projects;

    void add(const ProcRow& row) {
        ++processes;
        memory += row.sample.footprint;
        if (row.project) projects.emplace(Paths::lastComponent(*row.project));
    }

    std::string detail(std::string_view locale) const {
        auto text = processes == 1 ? "1 process" : std::to_string(processes) + " processes";
        constexpr std::ptrdiff_t mostNamed = 3;
        const auto named = std::min(mostNamed, std::ssize(projects));
        std::string_view separator = " in ";
        for (const auto& project : std::ranges::subrange(projects.begin(), std::next(projects.begin(), named))) {
            text.append(std::exchange(separator, ", ")).append(project);
        }
        return text + ", " + Format::bytes(memory, locale);
    }
};

bool canBeCommand(const ProcRow& row, std::uint32_t uid) {
    return !row.appPath && row.sample.uid == uid && !row.sample.isSystem();
}

std::vector<RuleSuggestion> byMemory(std::vector<RuleSuggestion> entries) {
    std::ranges::sort(entries, {}, &RuleSuggestion::id);
    std::ranges::stable_sort(entries, std::ranges::greater(), &RuleSuggestion::memory);
    return entries;
}

std::string helpersOf(const Decision& session, std::string_view locale) {
    auto text = Format::bytes(session.memory, locale);
    if (session.pids.size() == 2) return text + " with 1 helper";
    if (session.pids.size() > 2) return text + " with " + std::to_string(session.pids.size() - 1) + " helpers";
    return text;
}

std::vector<std::string> allAgents() { return {Rule::defaultAgentNames.begin(), Rule::defaultAgentNames.end()}; }

}  // namespace

std::int64_t limitAbove(std::uint64_t memory) {
    const auto exceeds = [memory](std::int64_t limit) {
        return static_cast<double>(*Rule{.memoryMB = limit}.memoryLimit()) > 1.5 * static_cast<double>(memory);
    };
    const auto found = std::ranges::find_if(RuleConditions::memoryMB, exceeds);
    return found == RuleConditions::memoryMB.end() ? RuleConditions::memoryMB.back() : *found;
}

Rule appRule(const std::string& appID, const std::string& name, std::uint64_t memory) {
    return {.id = UUID::random(),
            .name = "Restart " + name + " when it grows",
            .target = AppTarget{appID, name},
            .unusedMinutes = 60,
            .memoryMB = limitAbove(memory),
            .action = RuleAction::relaunch};
}

Rule commandRule(const std::string& name, std::vector<std::string> patterns) {
    return {.id = UUID::random(),
            .name = "Stop idle " + name,
            .target = CommandTarget{std::move(patterns)},
            .unusedMinutes = 120,
            .action = RuleAction::terminate};
}

Rule agentRule(bool onlyWithoutPrompt) {
    return {.id = UUID::random(),
            .name = onlyWithoutPrompt ? "Claude Code sessions that never got a prompt" : "Idle AI agent sessions",
            .target = AgentSessionTarget{allAgents(), onlyWithoutPrompt},
            .unusedMinutes = onlyWithoutPrompt ? 30 : 60,
            .action = RuleAction::terminate};
}

std::vector<RuleSuggestion> appSuggestions(const AppModel& model, std::string_view locale) {
    std::vector<RuleSuggestion> entries;
    for (const auto& app : runningApps(model.snapshot->rows, model.rowNames())) {
        if (isOwn(app, model)) continue;
        entries.push_back({.id = app.id,
                           .title = app.name,
                           .detail = Format::bytes(app.memory, locale),
                           .appPath = app.appPath,
                           .memory = app.memory,
                           .rule = appRule(app.id, app.name, app.memory)});
    }
    return entries;
}

std::vector<RuleSuggestion> commandSuggestions(const AppModel& model, std::string_view locale) {
    std::map<std::string, CommandGroup, std::less<>> groups;
    for (const auto& row : model.snapshot->rows) {
        if (canBeCommand(row, model.uid())) groups[std::string(row.sample.ruleMatch())].add(row);
    }
    std::vector<RuleSuggestion> entries;
    for (const auto& [match, group] : groups) {
        entries.push_back({.id = match,
                           .title = match,
                           .detail = group.detail(locale),
                           .memory = group.memory,
                           .rule = commandRule(match, {match})});
    }
    return byMemory(std::move(entries));
}

std::vector<RuleSuggestion> agentSuggestions(const AppModel& model, bool onlyWithoutPrompt, std::string_view locale) {
    std::vector<RuleSuggestion> entries;
    for (const auto& session : RuleEngine::candidates(agentRule(onlyWithoutPrompt), model.world())) {
        entries.push_back({.id = session.subjectKey,
                           .title = session.title,
                           .detail = helpersOf(session, locale),
                           .memory = session.memory,
                           .rule = session.rule});
    }
    return byMemory(std::move(entries));
}

}  // namespace tolvane::RuleSuggestions
