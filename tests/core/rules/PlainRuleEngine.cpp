#include "tests/core/rules/PlainRuleEngine.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "base/LowerCase.h"
#include "base/Paths.h"
#include "core/rules/SubjectKey.h"
#include "tests/fakes/RuleScenes.h"

namespace tolvane::plain {

namespace {

bool mayTouch(const ProcRow& row, const World& world) {
    return row.sample.uid == world.uid && row.id() >= 2 && row.id() != world.selfPID;
}

std::vector<Decision> apps(const Rule& rule, const AppTarget& target, const World& world) {
    if (world.frontmostAppID == target.appID) return {};
    Decision found{.rule = rule, .subjectKey = "app:" + target.appID, .title = target.name};
    for (const auto& row : world.rows) {
        if (!row.appID || *row.appID != target.appID || !mayTouch(row, world)) continue;
        found.unusedSince = found.pids.empty() ? row.unusedSince : std::max(found.unusedSince, row.unusedSince);
        found.pids.push_back(row.id());
        found.memory += row.sample.footprint;
        found.compressed += row.sample.compressed;
    }
    return found.pids.empty() ? std::vector<Decision>{} : std::vector{found};
}

bool matches(const ProcRow& row, const CommandTarget& target) {
    const auto text = lowerCased(row.sample.commandLine());
    return std::ranges::any_of(target.patterns, [&](const std::string& pattern) {
        return !pattern.empty() && text.find(lowerCased(pattern)) != std::string::npos;
    });
}

std::vector<Decision> commands(const Rule& rule, const CommandTarget& target, const World& world) {
    std::vector<Decision> found;
    for (const auto& row : world.rows) {
        if (!mayTouch(row, world) || row.sample.isSystem() || !matches(row, target)) continue;
        if (row.appID && world.frontmostAppID && *row.appID == *world.frontmostAppID) continue;
        found.push_back({.rule = rule,
                         .subjectKey = SubjectKey::process(row.sample),
                         .title = row.sample.name.str(),
                         .pids = {row.id()},
                         .memory = row.sample.footprint,
                         .unusedSince = row.unusedSince,
                         .compressed = row.sample.compressed});
    }
    return found;
}

std::string trimmed(const std::string& text) {
    const auto begin = text.find_first_not_of(" \t");
    return begin == std::string::npos ? "" : text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

class Sessions {
public:
    Sessions(const Rule& rule, const AgentSessionTarget& target, const World& world)
        : rule_(rule), target_(target), world_(world) {
        for (const auto& row : world.rows) {
            byPID_.try_emplace(row.id(), &row);
            children_[row.sample.ppid].push_back(&row);
        }
        for (const auto& worker : world.claudeWorkers) workers_[worker.hostPID] = &worker;
        for (const auto& [pid, worker] : workers_) {
            if (byPID_.contains(pid)) hostParents_.insert(byPID_[pid]->sample.ppid);
        }
        for (const auto& row : world.rows) match(row);
    }

    std::vector<Decision> find() {
        std::set<Pid> roots;
        for (const auto& [pid, name] : matched_) {
            if (isRoot(pid) && isWanted(pid)) roots.insert(pid);
        }
        std::set<Pid> boundary = hostParents_;
        boundary.insert(roots.begin(), roots.end());
        std::vector<Decision> found;
        for (const Pid root : roots) {
            if (plain::mayTouch(*byPID_[root], world_)) found.push_back(session(*byPID_[root], boundary));
        }
        return found;
    }

private:
    void match(const ProcRow& row) {
        if (row.appPath && !workers_.contains(row.id())) return;
        const auto identities = fakes::agentIdentities(row.sample);
        for (const auto& name : target_.names) {
            const auto wanted = lowerCased(trimmed(name));
            if (wanted.empty() || !identities.contains(wanted)) continue;
            matched_[row.id()] = wanted;
            return;
        }
    }

    bool isInsideAnother(Pid pid) {
        std::set<Pid> visited{pid};
        for (Pid above = byPID_[pid]->sample.ppid; above >= 2 && byPID_.contains(above);
             above = byPID_[above]->sample.ppid) {
            if (!visited.insert(above).second) return false;
            if (matched_.contains(above)) return true;
        }
        return false;
    }

    bool isRoot(Pid pid) { return workers_.contains(pid) || (!hostParents_.contains(pid) && !isInsideAnother(pid)); }

    bool isWanted(Pid pid) {
        return !target_.onlyWithoutPrompt || (workers_.contains(pid) && !workers_[pid]->hasPrompt);
    }

    Decision session(const ProcRow& root, const std::set<Pid>& boundary) {
        std::vector<const ProcRow*> members{&root};
        for (std::size_t next = 0; next < members.size(); ++next) {
            for (const auto* child : children_[members[next]->id()]) {
                const bool isTaken = std::ranges::find(members.begin() + 1, members.end(), child) != members.end();
                if (!isTaken && !boundary.contains(child->id())) members.push_back(child);
            }
        }
        Decision decision{.rule = rule_, .unusedSince = root.unusedSince};
        for (const auto* row : members) {
            if (!plain::mayTouch(*row, world_)) continue;
            decision.pids.push_back(row->id());
            decision.memory += row->sample.footprint;
            decision.compressed += row->sample.compressed;
            decision.unusedSince = std::max(decision.unusedSince, row->unusedSince);
        }
        if (workers_.contains(root.id())) {
            const auto& worker = *workers_[root.id()];
            decision.title = "Claude session " + worker.name.value_or(worker.shortID);
            decision.subjectKey = "claude:" + worker.shortID;
        } else {
            decision.title = matched_[root.id()];
            if (root.sample.cwd) decision.title += " in " + std::string(Paths::lastComponent(*root.sample.cwd));
            decision.subjectKey = SubjectKey::agent(root.sample);
        }
        return decision;
    }

    const Rule& rule_;
    const AgentSessionTarget& target_;
    const World& world_;
    std::map<Pid, const ProcRow*> byPID_;
    std::map<Pid, std::vector<const ProcRow*>> children_;
    std::map<Pid, const ClaudeWorker*> workers_;
    std::set<Pid> hostParents_;
    std::map<Pid, std::string> matched_;
};

bool isDue(const Decision& decision, Date now, const RuleEngine::FiredDates& lastFired) {
    const auto& rule = decision.rule;
    if (rule.unusedMinutes && now - decision.unusedSince < Seconds{60.0 * static_cast<double>(*rule.unusedMinutes)}) {
        return false;
    }
    if (rule.memoryMB && decision.memory < static_cast<std::uint64_t>(*rule.memoryMB) << 20U) return false;
    const auto fired = lastFired.find(RuleEngine::cooldownKey(rule, decision.subjectKey));
    return fired == lastFired.end() || now - fired->second >= Seconds{rule.dryRun ? 3600.0 : 600.0};
}

}  // namespace

std::vector<Decision> candidates(const Rule& rule, const World& world) {
    if (const auto* app = std::get_if<AppTarget>(&rule.target)) return apps(rule, *app, world);
    if (const auto* command = std::get_if<CommandTarget>(&rule.target)) return commands(rule, *command, world);
    const AgentSessionTarget unprompted{.names = {"claude"}, .onlyWithoutPrompt = true};
    const auto* agents = std::get_if<AgentSessionTarget>(&rule.target);
    return Sessions(rule, agents ? *agents : unprompted, world).find();
}

std::vector<Decision> decisions(const std::vector<Rule>& rules, const World& world, Date now,
                                const RuleEngine::FiredDates& lastFired) {
    std::vector<Decision> due;
    for (const auto& rule : rules) {
        if (!rule.enabled || !rule.hasCondition()) continue;
        if (rule.onlyWhenTight.value_or(false) && !world.memoryTight) continue;
        for (auto& decision : plain::candidates(rule, world)) {
            if (isDue(decision, now, lastFired)) due.push_back(std::move(decision));
        }
    }
    return due;
}

}  // namespace tolvane::plain
