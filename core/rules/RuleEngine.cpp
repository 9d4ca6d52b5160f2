#include "core/rules/RuleEngine.h"

#include "core/rules/AgentNames.h"
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

bool isCoolingDown(const Decision& decision, Date now, const FiredDates& lastFired) {
    if (lastFired.empty()) return false;
    const auto fired = lastFired.find(cooldownKey(decision.rule, decision.subjectKey));
    if (fired == lastFired.end()) return false;
    return now - fired->second < (decision.dryRun() ? dryRunCooldown : cooldown);
}

}  // namespace

std::vector<Decision> decisions(const std::vector<Rule>& rules, const World& world, Date now,
                                const FiredDates& lastFired) {
    auto asks = openAsks(rules, world, now);
    findSubjects(asks, world);
    std::vector<Decision> due;
    for (auto& ask : asks) {
        for (auto& decision : ask.found) {
            if (!isCoolingDown(decision, now, lastFired)) due.push_back(std::move(decision));
        }
    }
    return due;
}

std::vector<Decision> candidates(const Rule& rule, const World& world) {
    std::vector<Ask> asks = {Ask::all(rule)};
    findSubjects(asks, world);
    return std::move(asks.front().found);
}

std::string cooldownKey(const Rule& rule, std::string_view subject) {
    return rule.id.text() + "|" + std::string(subject);
}

std::set<std::string> agentIdentities(const ProcSample& sample) {
    std::set<std::string> names;
    std::string scratch;
    eachAgentName(sample, scratch, [&](std::string_view name) { names.emplace(name); });
    return names;
}

bool needsFrontmost(const Rule& rule) {
    if (rule.action == RuleAction::quit || rule.action == RuleAction::relaunch) return true;
    return rule.action == RuleAction::terminate && std::holds_alternative<AppTarget>(rule.target);
}

}  // namespace tolvane::RuleEngine
