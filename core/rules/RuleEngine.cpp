#include "core/rules/RuleEngine.h"

#include <utility>

#include "core/rules/AgentSearch.h"
#include "core/rules/AppSearch.h"
#include "core/rules/Ask.h"
#include "core/rules/CommandSearch.h"

namespace tolvane::RuleEngine {

namespace {

bool isOpen(const Rule& rule, const World& world) {
    return rule.enabled && rule.hasCondition() && (!rule.onlyWhenTight.value_or(false) || world.memoryTight) &&
           (world.frontmostKnown || !needsFrontmost(rule));
}

std::vector<Ask> openAsks(const std::vector<Rule>& rules, const World& world, Date now) {
    std::vector<Ask> asks;
    for (const auto& rule : rules) {
        if (!isOpen(rule, world)) continue;
        auto ask = Ask::due(rule, now);
        if (!ask) continue;
        ask->sparesApplications = !world.frontmostKnown && rule.action == RuleAction::terminate;
        asks.push_back(std::move(*ask));
    }
    return asks;
}

void findSubjects(std::vector<Ask>& asks, const World& world) {
    std::vector<Ask*> apps;
    std::vector<Ask*> commands;
    std::vector<Ask*> agents;
    for (auto& ask : asks) {
        const auto& target = ask.rule->target;
        const bool isApp = std::holds_alternative<AppTarget>(target);
        const bool isCommand = std::holds_alternative<CommandTarget>(target);
        (isApp ? apps : isCommand ? commands : agents).push_back(&ask);
    }
    findApps(apps, world);
    findCommands(commands, world);
    findAgentSessions(agents, world);
}

void dropCoolingDown(Ask& ask, const FiredDates& lastFired) {
    if (lastFired.empty() || ask.found.empty()) return;
    const Seconds span = ask.rule->dryRun ? dryRunCooldown : cooldown;
    auto key = cooldownKey(*ask.rule, {});
    const auto prefix = key.size();
    std::erase_if(ask.found, [&](const Subject& subject) {
        key.replace(prefix, std::string::npos, subject.key);
        const auto fired = lastFired.find(key);
        return fired != lastFired.end() && ask.now - fired->second < span;
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
    auto asks = openAsks(rules, world, now);
    findSubjects(asks, world);
    std::size_t most = 0;
    for (auto& ask : asks) {
        dropCoolingDown(ask, lastFired);
        most += ask.found.size();
    }
    std::vector<Decision> due;
    due.reserve(most);
    for (auto& ask : asks) {
        for (auto& subject : ask.found) due.push_back(decisionOn(std::move(subject), *ask.rule));
    }
    return due;
}

std::vector<Decision> candidates(const Rule& rule, const World& world) {
    std::vector<Ask> asks = {Ask::all(rule)};
    findSubjects(asks, world);
    std::vector<Decision> all;
    for (auto& subject : asks.front().found) all.push_back(decisionOn(std::move(subject), rule));
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
