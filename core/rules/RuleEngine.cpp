#include "core/rules/RuleEngine.h"

#include <utility>

#include "core/rules/SubjectSearch.h"

namespace tolvane::RuleEngine {

namespace {

bool isOpen(const Rule& rule, const World& world) {
    return rule.enabled && rule.hasCondition() && (!rule.onlyWhenTight.value_or(false) || world.memoryTight) &&
           (world.frontmostKnown || !needsFrontmost(rule));
}

std::vector<SubjectSearch> openSearches(const std::vector<Rule>& rules, const World& world, Date now) {
    std::vector<SubjectSearch> searches;
    for (const auto& rule : rules) {
        if (!isOpen(rule, world)) continue;
        auto search = SubjectSearch::due(rule, now);
        if (!search) continue;
        search->sparesApplications = !world.frontmostKnown && rule.action == RuleAction::terminate;
        searches.push_back(std::move(*search));
    }
    return searches;
}

void findSubjects(std::vector<SubjectSearch>& searches, const World& world) {
    std::vector<SubjectSearch*> apps;
    std::vector<SubjectSearch*> commands;
    std::vector<SubjectSearch*> agents;
    for (auto& search : searches) {
        const auto& target = search.rule->target;
        const bool isApp = std::holds_alternative<AppTarget>(target);
        const bool isCommand = std::holds_alternative<CommandTarget>(target);
        (isApp ? apps : isCommand ? commands : agents).push_back(&search);
    }
    findApps(apps, world);
    findCommands(commands, world);
    findAgentSessions(agents, world);
}

void dropCoolingDown(SubjectSearch& search, const FiredDates& lastFired) {
    if (lastFired.empty() || search.found.empty()) return;
    const Seconds span = search.rule->dryRun ? dryRunCooldown : cooldown;
    auto key = cooldownKey(*search.rule, {});
    const auto prefix = key.size();
    std::erase_if(search.found, [&](const Subject& subject) {
        key.replace(prefix, std::string::npos, subject.key);
        const auto fired = lastFired.find(key);
        return fired != lastFired.end() && search.now - fired->second < span;
    });
}

Decision decisionOn(Subject subject, const Rule& rule) {
    return {.rule = rule,
            .subjectKey = std::move(subject.key),
            .title = std::move(subject.title),
            .pids = std::move(subject.pids),
            .memory = subject.memory,
            .unusedSince = subject.unusedSince,
            .compressed = subject.compressed};
}

}  // namespace

std::vector<Decision> decisions(const std::vector<Rule>& rules, const World& world, Date now,
                                const FiredDates& lastFired) {
    auto searches = openSearches(rules, world, now);
    findSubjects(searches, world);
    std::size_t most = 0;
    for (auto& search : searches) {
        dropCoolingDown(search, lastFired);
        most += search.found.size();
    }
    std::vector<Decision> due;
    due.reserve(most);
    for (auto& search : searches) {
        for (auto& subject : search.found) due.push_back(decisionOn(std::move(subject), *search.rule));
    }
    return due;
}

std::vector<Decision> candidates(const Rule& rule, const World& world) {
    std::vector<SubjectSearch> searches = {SubjectSearch::all(rule)};
    findSubjects(searches, world);
    std::vector<Decision> all;
    for (auto& subject : searches.front().found) all.push_back(decisionOn(std::move(subject), rule));
    return all;
}

std::string cooldownKey(const Rule& rule, std::string_view subject) {
    return rule.id.text() + "|" + std::string(subject);
}

bool needsFrontmost(const Rule& rule) {
    if (rule.action == RuleAction::quit || rule.action == RuleAction::relaunch) return true;
    return rule.action == RuleAction::terminate && std::holds_alternative<AppTarget>(rule.target);
}

}  // namespace tolvane::RuleEngine
