#include "core/rules/SubjectSearch.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "base/Paths.h"
#include "core/rules/AgentNames.h"
#include "core/rules/SubjectKey.h"
#include "core/sampling/ProcessTree.h"

namespace tolvane {

namespace {

using Place = ProcessTree::Place;

AgentSessionTarget targetOf(const Rule& rule) {
    if (const auto* target = std::get_if<AgentSessionTarget>(&rule.target)) return *target;
    return {.names = {"claude"}, .onlyWithoutPrompt = true};
}

/// What a rule looks for. Rules that want the same share one search.
struct Wanted {
    /// Numbers of the names, most wanted first.
    std::vector<std::uint32_t> names;
    bool onlyWithoutPrompt = false;

    auto operator<=>(const Wanted&) const = default;
};

/// An agent and everything that it started.
struct Session {
    Place root = 0;
    /// Number of the name by which it was found.
    std::uint32_t name = 0;
    std::vector<Pid> pids;
    std::uint64_t memory = 0;
    std::uint64_t compressed = 0;
    Date unusedSince;
};

/// What every search for sessions needs. Made once per world.
class AgentWorld {
public:
    AgentWorld(const World& seen, WorkersByHost workers)
        : world(seen), tree(seen.rows), workers_(std::move(workers)), isHostParent_(seen.rows.size()) {
        for (const auto& [pid, worker] : workers_) {
            const auto host = tree.place(pid);
            const auto parent = host ? tree.parent(*host) : std::nullopt;
            if (parent) isHostParent_[*parent] = true;
        }
    }

    const World& world;
    const ProcessTree tree;

    const ProcRow& row(Place place) const { return world.rows[place]; }
    const ClaudeWorker* worker(Place place) const {
        const auto found = workers_.find(row(place).sample.pid);
        return found == workers_.end() ? nullptr : found->second;
    }
    /// Whether the process started a listed worker.
    bool isHostParent(Place place) const { return isHostParent_[place]; }

private:
    WorkersByHost workers_;
    std::vector<bool> isHostParent_;
};

/// Finds the sessions of one wanted list after the other, and keeps its buffers between them.
class SessionSearch {
public:
    SessionSearch(const AgentWorld& agents, const std::vector<AgentMatch>& matches)
        : agents_(agents), matches_(matches), labels_(agents.world.rows.size()), taken_(agents.world.rows.size()) {}

    /// Sorted by the pid of their roots.
    std::vector<Session> sessions(const Wanted& wanted) {
        label(wanted);
        const auto roots = findRoots(wanted);
        for (const Place root : roots) labels_[root].isRoot = true;
        std::vector<Session> found;
        for (const Place root : roots) {
            if (agents_.world.mayTouch(agents_.row(root).sample)) found.push_back(session(root));
        }
        for (const Place place : labelled_) labels_[place] = {};
        labelled_.clear();
        return found;
    }

private:
    /// The name by which a place is known.
    struct Label {
        std::uint32_t row = 0;
        std::uint32_t name = 0;
        std::ptrdiff_t rank = -1;
        bool isRoot = false;

        bool isSet() const { return rank >= 0; }
    };

    /// Gives each matching place its most wanted name. Of rows that share a pid the last one counts.
    void label(const Wanted& wanted) {
        for (const auto& [row, name] : matches_) {
            const auto rank = std::ranges::find(wanted.names, name) - wanted.names.begin();
            if (static_cast<std::size_t>(rank) == wanted.names.size()) continue;
            const Place place = agents_.tree.placeOf(row);
            auto& known = labels_[place];
            if (!known.isSet()) labelled_.push_back(place);
            if (!known.isSet() || known.row != row || rank < known.rank) known = {row, name, rank};
        }
    }

    bool isInsideAnother(Place place) const {
        return agents_.tree.anyAbove(place, ProcessTree::Repeated::first,
                                     [&](Place above) { return labels_[above].isSet(); });
    }

    bool isRoot(Place place) const {
        if (agents_.worker(place)) return true;
        return !agents_.isHostParent(place) && !isInsideAnother(place);
    }

    bool isWanted(Place root, const Wanted& wanted) const {
        if (!wanted.onlyWithoutPrompt) return true;
        const auto* worker = agents_.worker(root);
        return worker && !worker->hasPrompt;
    }

    std::vector<Place> findRoots(const Wanted& wanted) const {
        std::vector<Place> roots;
        for (const Place place : labelled_) {
            if (isRoot(place) && isWanted(place, wanted)) roots.push_back(place);
        }
        std::ranges::sort(roots, {}, [&](Place place) { return agents_.row(place).sample.pid; });
        return roots;
    }

    /// Collects the root and what it started, by position. The descent stops at other sessions and at processes that
    /// run listed workers.
    void findMembers(Place root) {
        members_.assign(1, root);
        ++search_;
        for (std::size_t next = 0; next < members_.size(); ++next) {
            for (const auto child : agents_.tree.children(agents_.tree.placeOf(members_[next]))) {
                const Place place = agents_.tree.placeOf(child);
                // Take each row once: parents can form a ring when a listing caught a pid in two lives.
                if (taken_[child] == search_ || labels_[place].isRoot || agents_.isHostParent(place)) continue;
                taken_[child] = search_;
                members_.push_back(child);
            }
        }
    }

    Session session(Place root) {
        findMembers(root);
        Session session{.root = root, .name = labels_[root].name, .unusedSince = agents_.row(root).unusedSince};
        for (const auto member : members_) {
            const auto& row = agents_.world.rows[member];
            if (!agents_.world.mayTouch(row.sample)) continue;
            session.pids.push_back(row.sample.pid);
            session.memory += row.sample.footprint;
            session.compressed += row.sample.compressed;
            session.unusedSince = std::max(session.unusedSince, row.unusedSince);
        }
        return session;
    }

    const AgentWorld& agents_;
    const std::vector<AgentMatch>& matches_;
    /// By place. `labelled_` lists the ones that are set.
    std::vector<Label> labels_;
    std::vector<Place> labelled_;
    std::vector<std::uint32_t> members_;
    /// By row: the latest search that took it.
    std::vector<std::uint32_t> taken_;
    std::uint32_t search_ = 0;
};

Subject subjectOf(const Session& session, const AgentWorld& agents, const AgentNameSet& names) {
    Subject subject{.pids = session.pids,
                    .memory = session.memory,
                    .unusedSince = session.unusedSince,
                    .compressed = session.compressed};
    const auto& root = agents.row(session.root);
    if (const auto* worker = agents.worker(session.root)) {
        subject.title = "Claude session " + worker->name.value_or(worker->shortID);
        subject.key = SubjectKey::worker(worker->shortID);
        return subject;
    }
    subject.title = names.name(session.name);
    subject.key = SubjectKey::agent(root.sample);
    if (root.sample.cwd) subject.title += " in " + std::string(Paths::lastComponent(*root.sample.cwd));
    return subject;
}

/// Removes the names that no row goes by, so that rules which differ only in those share a search.
void dropUnmatched(std::vector<Wanted>& wanted, const std::vector<AgentMatch>& matches, std::size_t names) {
    std::vector<bool> isMatched(names);
    for (const auto& match : matches) isMatched[match.name] = true;
    for (auto& one : wanted) std::erase_if(one.names, [&](std::uint32_t name) { return !isMatched[name]; });
}

}  // namespace

void findAgentSessions(const std::vector<SubjectSearch*>& searches, const World& world) {
    AgentNameSet names;
    std::vector<Wanted> wanted;
    for (const auto* search : searches) {
        const auto target = targetOf(*search->rule);
        wanted.push_back({names.add(target.names), target.onlyWithoutPrompt});
    }
    if (names.empty()) return;
    auto workers = workersByHost(world);
    const auto matches = matchAgents(world, workers, names);
    if (matches.empty()) return;

    dropUnmatched(wanted, matches, names.size());
    const AgentWorld agents(world, std::move(workers));
    SessionSearch finder(agents, matches);
    std::map<Wanted, std::vector<Session>> known;
    for (std::size_t index = 0; index < searches.size(); ++index) {
        const auto [sessions, isNew] = known.try_emplace(wanted[index]);
        if (isNew) sessions->second = finder.sessions(wanted[index]);
        for (const auto& session : sessions->second) {
            if (!searches[index]->fits(session.unusedSince, session.memory)) continue;
            searches[index]->found.push_back(subjectOf(session, agents, names));
        }
    }
}

}  // namespace tolvane
