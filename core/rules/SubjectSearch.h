#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Date.h"
#include "base/Pid.h"
#include "core/rules/Rule.h"
#include "core/rules/World.h"

namespace tolvane {

/// A candidate; it becomes a Decision unless it is cooling down, as most are. A rule is expensive to copy.
struct Subject {
    std::string key;
    std::string title;
    std::vector<Pid> pids;
    std::uint64_t memory = 0;
    Date unusedSince;
    std::uint64_t compressed = 0;
};

/// One rule looking for its subjects in a world, and what it found. Refers to the rule.
struct SubjectSearch {
    const Rule* rule = nullptr;
    Date now;
    /// A subject must have been unused for this long.
    std::optional<Seconds> unused;
    /// A subject must hold at least this many bytes.
    std::uint64_t memory = 0;
    /// Skip the processes of applications.
    bool sparesApplications = false;
    /// The subjects that fit, in order.
    std::vector<Subject> found;

    /// Finds every subject.
    static SubjectSearch all(const Rule& rule);
    /// Finds the subjects that meet the rule's conditions. Returns nullopt when no subject can meet one of them.
    static std::optional<SubjectSearch> due(const Rule& rule, Date now);

    bool fits(Date unusedSince, std::uint64_t bytes) const {
        return bytes >= memory && (!unused || now - unusedSince >= *unused);
    }
};

/// Finds applications, except the one in front; all processes with one identifier are one subject. One pass over the
/// rows serves all searches. Each search must have an `AppTarget`.
void findApps(const std::vector<SubjectSearch*>& searches, const World& world);

/// Finds processes by their command lines, except programs of the system and of the application in front; each process
/// is a subject. One pass over the rows serves all searches. It joins a command line at most once, and only if the row
/// meets the other conditions of some search. Each search must have a `CommandTarget`.
void findCommands(const std::vector<SubjectSearch*>& searches, const World& world);

/// Finds sessions of agents: an agent and everything it started, down to other sessions. One pass over the rows finds
/// the agents of all searches. Each search must have an `AgentSessionTarget` or an `EmptyClaudeSessionTarget`.
void findAgentSessions(const std::vector<SubjectSearch*>& searches, const World& world);

}  // namespace tolvane
