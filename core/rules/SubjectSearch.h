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

/// What a rule found: a decision before it is one. Most are dropped, since they cool down, and a rule is large to copy.
struct Subject {
    std::string key;
    std::string title;
    std::vector<Pid> pids;
    std::uint64_t memory = 0;
    Date unusedSince;
    std::uint64_t compressed = 0;
};

/// One rule that looks for its subjects in a world, and what it found. Refers to its rule.
struct SubjectSearch {
    const Rule* rule = nullptr;
    Date now;
    /// A subject must have been unused for so long.
    std::optional<Seconds> unused;
    /// A subject must hold so many bytes.
    std::uint64_t memory = 0;
    /// Processes of applications are left alone.
    bool sparesApplications = false;
    /// Those that fit, in order.
    std::vector<Subject> found;

    /// Finds every subject.
    static SubjectSearch all(const Rule& rule);
    /// Finds those that meet the rule's conditions; none where a condition cannot be met.
    static std::optional<SubjectSearch> due(const Rule& rule, Date now);

    bool fits(Date unusedSince, std::uint64_t bytes) const {
        return bytes >= memory && (!unused || now - unusedSince >= *unused);
    }
};

/// Finds applications: all processes of one identifier are one subject, and the one in front is none. One pass over
/// the rows serves all searches; each looks for an `AppTarget`.
void findApps(const std::vector<SubjectSearch*>& searches, const World& world);

/// Finds processes by their command lines; each is a subject of its own. Programs of the system and of the application
/// in front are passed over. One pass over the rows serves all searches, and a command line is put together at most
/// once, only for a row that fits some search in all else. Each looks for a `CommandTarget`.
void findCommands(const std::vector<SubjectSearch*>& searches, const World& world);

/// Finds sessions of agents: an agent with all that it started, down to other sessions. Each search has an
/// `AgentSessionTarget` or an `EmptyClaudeSessionTarget`. One pass over the rows finds the agents of all searches.
void findAgentSessions(const std::vector<SubjectSearch*>& searches, const World& world);

}  // namespace tolvane
