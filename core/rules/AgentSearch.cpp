#include "core/rules/AgentSearch.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>

#include "core/Paths.h"
#include "core/rules/AgentMatches.h"
#include "core/rules/PidIndex.h"
#include "core/rules/SubjectKey.h"

namespace tolvane {

namespace {

AgentSessionTarget targetOf(const Rule& rule) {
    if (const auto* target = std::get_if<AgentSessionTarget>(&rule.target)) return *target;
    return {.names = {"claude"}, .onlyWithoutPrompt = true};
}

struct Wanted {
    Ask* ask = nullptr;
    /// Numbers of the names, the most wanted first.
    std::vector<std::uint32_t> names;
    bool onlyWithoutPrompt = false;
};

struct Label {
    std::uint32_t row = 0;
    std::ptrdiff_t rank = 0;
    std::uint32_t name = 0;
};

/// By which name each matching pid is known; of rows that share a pid the last counts.
using Labels = std::unordered_map<Pid, Label>;

/// What sessions are found with, the same for all rules: made once per world.
class AgentWorld {
public:
    AgentWorld(const World& world, WorkersByHost workers)
        : world_(world), workers_(std::move(workers)), rows_(PidIndex::byPid(world.rows)) {
        for (const auto& [pid, worker] : workers_) {
            if (const auto* row = rows_.first(pid)) hostParents_.insert(world_.rows[*row].sample.ppid);
        }
    }

    const ClaudeWorker* worker(Pid pid) const {
        const auto found = workers_.find(pid);
        return found == workers_.end() ? nullptr : found->second;
    }
    const ProcRow* row(Pid pid) const {
        const auto* position = rows_.first(pid);
        return position ? &world_.rows[*position] : nullptr;
    }
    const std::set<Pid>& hostParents() const { return hostParents_; }

    bool isInsideAnother(Pid pid, const Labels& labels) const;
    /// The root and what it started, by position; the descent stops at `boundary`.
    std::vector<std::uint32_t> members(Pid root, const std::set<Pid>& boundary);

private:
    const World& world_;
    WorkersByHost workers_;
    PidIndex rows_;
    std::optional<PidIndex> children_;
    /// What runs the listed workers.
    std::set<Pid> hostParents_;
};

bool AgentWorld::isInsideAnother(Pid pid, const Labels& labels) const {
    Pid ancestor = row(pid)->sample.ppid;
    // After as many steps as there are rows a walk goes in a ring and has seen all of it.
    for (std::size_t step = 0; step < world_.rows.size() && ancestor >= 2 && ancestor != pid; ++step) {
        const auto* above = row(ancestor);
        if (!above) return false;
        if (labels.contains(ancestor)) return true;
        ancestor = above->sample.ppid;
    }
    return false;
}

std::vector<std::uint32_t> AgentWorld::members(Pid root, const std::set<Pid>& boundary) {
    if (!children_) children_ = PidIndex::byParent(world_.rows);
    std::vector<std::uint32_t> members = {*rows_.first(root)};
    // Each row once: parents can form a ring where a listing caught a pid in two lives.
    std::vector<bool> taken(world_.rows.size());
    for (std::size_t next = 0; next < members.size(); ++next) {
        for (const auto& [parent, child] : children_->all(world_.rows[members[next]].sample.pid)) {
            if (taken[child] || boundary.contains(world_.rows[child].sample.pid)) continue;
            taken[child] = true;
            members.push_back(child);
        }
    }
    return members;
}

/// The sessions of one rule.
class SessionSearch {
public:
    SessionSearch(const World& world, AgentWorld& agents, const AgentNameSet& names, const Wanted& wanted)
        : world_(world), agents_(agents), names_(names), wanted_(wanted) {}

    void run(const std::vector<AgentMatch>& matches) {
        label(matches);
        const auto roots = findRoots();
        auto boundary = agents_.hostParents();
        boundary.insert(roots.begin(), roots.end());
        for (const Pid root : roots) {
            const auto* row = agents_.row(root);
            if (mayTouch(row->sample, world_)) wanted_.ask->add(session(*row, boundary));
        }
    }

private:
    /// Gives each matching row the most wanted of its names.
    void label(const std::vector<AgentMatch>& matches) {
        for (const auto& [row, name] : matches) {
            const auto place = std::ranges::find(wanted_.names, name);
            if (place == wanted_.names.end()) continue;
            const Label label{.row = row, .rank = place - wanted_.names.begin(), .name = name};
            const auto [known, isNew] = labels_.try_emplace(world_.rows[row].sample.pid, label);
            if (!isNew && (known->second.row != row || label.rank < known->second.rank)) known->second = label;
        }
    }

    bool isRoot(Pid pid) const {
        if (agents_.worker(pid)) return true;
        return !agents_.hostParents().contains(pid) && !agents_.isInsideAnother(pid, labels_);
    }

    bool isWanted(Pid root) const {
        const auto* worker = agents_.worker(root);
        return !wanted_.onlyWithoutPrompt || (worker && !worker->hasPrompt);
    }

    std::set<Pid> findRoots() const {
        std::set<Pid> roots;
        for (const auto& [pid, label] : labels_) {
            if (isRoot(pid) && isWanted(pid)) roots.insert(pid);
        }
        return roots;
    }

    void addTitle(Decision& decision, const ProcRow& root) const {
        if (const auto* worker = agents_.worker(root.sample.pid)) {
            decision.title = "Claude session " + worker->name.value_or(worker->shortID);
            decision.subjectKey = SubjectKey::worker(worker->shortID);
            return;
        }
        decision.title = names_.name(labels_.at(root.sample.pid).name);
        decision.subjectKey = SubjectKey::agent(root.sample);
        if (root.sample.cwd) decision.title += " in " + std::string(Paths::lastComponent(*root.sample.cwd));
    }

    Decision session(const ProcRow& root, const std::set<Pid>& boundary) const {
        Decision decision{.rule = *wanted_.ask->rule, .unusedSince = root.unusedSince};
        addTitle(decision, root);
        for (const auto position : agents_.members(root.sample.pid, boundary)) {
            const auto& row = world_.rows[position];
            if (!mayTouch(row.sample, world_)) continue;
            decision.pids.push_back(row.sample.pid);
            decision.memory += row.sample.footprint;
            decision.compressed += row.sample.compressed;
            decision.unusedSince = std::max(decision.unusedSince, row.unusedSince);
        }
        return decision;
    }

    const World& world_;
    AgentWorld& agents_;
    const AgentNameSet& names_;
    const Wanted& wanted_;
    Labels labels_;
};

std::vector<Wanted> wantedSessions(const std::vector<Ask*>& asks, AgentNameSet& names) {
    std::vector<Wanted> all;
    for (auto* ask : asks) {
        const auto target = targetOf(*ask->rule);
        auto numbers = names.add(target.names);
        if (!numbers.empty()) all.push_back({ask, std::move(numbers), target.onlyWithoutPrompt});
    }
    return all;
}

}  // namespace

void findAgentSessions(const std::vector<Ask*>& asks, const World& world) {
    AgentNameSet names;
    const auto wanted = wantedSessions(asks, names);
    if (wanted.empty()) return;
    auto workers = workersByHost(world);
    const auto matches = matchAgents(world, workers, names);
    if (matches.empty()) return;
    AgentWorld agents(world, std::move(workers));
    for (const auto& one : wanted) SessionSearch(world, agents, names, one).run(matches);
}

}  // namespace tolvane
