#include "core/projects/Projects.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <map>
#include <numeric>
#include <string>
#include <tuple>
#include <unordered_map>
#include <unordered_set>

#include "base/LowerCase.h"
#include "core/projects/Ancestry.h"
#include "core/rules/AgentNames.h"
#include "core/rules/Rule.h"

namespace tolvane::Projects {

namespace {

struct Members {
    std::vector<const ProcRow*> rows;
    int leftAlone = 0;
};

using MembersByRoot = std::map<Text, Members>;

template <std::size_t count>
bool isNamed(const ProcSample& sample, const std::array<std::string_view, count>& names) {
    return std::ranges::find(names, lowerCased(sample.name)) != names.end();
}

bool isEditor(const ProcSample& sample) { return isNamed(sample, editors); }

/// Nobody's project work: it leaves no trace in any group.
bool isBystander(const ProcSample& sample, const World& world, Ancestry& ancestry) {
    return sample.uid != world.uid || sample.pid < 2 || sample.pid == world.selfPID || sample.isSystem() ||
           isNamed(sample, shells) || ancestry.anyOf(sample, isEditor);
}

bool isAgent(const ProcSample& sample) {
    bool found = false;
    std::string scratch;
    eachAgentName(sample, scratch, [&](std::string_view name) {
        found = found || std::ranges::find(Rule::defaultAgentNames, name) != Rule::defaultAgentNames.end();
    });
    return found;
}

bool isLeftAlone(const ProcRow& row, const std::set<Pid>& launchd, Ancestry& ancestry) {
    const auto isManaged = [&](const ProcSample& sample) { return launchd.contains(sample.pid); };
    return row.claudeSession || isAgent(row.sample) || ancestry.anyOf(row.sample, isManaged);
}

MembersByRoot membersByRoot(const World& world, const std::set<Pid>& launchd) {
    Ancestry ancestry(world.rows);
    MembersByRoot members;
    for (const auto& row : world.rows) {
        if (!row.project || isBystander(row.sample, world, ancestry)) continue;
        auto& project = members[*row.project];
        if (isLeftAlone(row, launchd, ancestry)) {
            ++project.leftAlone;
        } else {
            project.rows.push_back(&row);
        }
    }
    return members;
}

ProjectGroup groupOf(const Text& root, Members members) {
    // They stand in one list, so that the address keeps the order of rows with one pid.
    std::ranges::sort(members.rows, {}, [](const ProcRow* row) { return std::tuple(row->id(), row); });
    ProjectGroup group{.root = root.str(), .leftAlone = members.leftAlone};
    group.rows.reserve(members.rows.size());
    for (const auto* row : members.rows) group.rows.push_back(*row);
    return group;
}

std::uint64_t footprintOf(const ProjectGroup& group) {
    return std::accumulate(group.rows.begin(), group.rows.end(), std::uint64_t{0},
                           [](std::uint64_t sum, const ProcRow& row) { return sum + row.sample.footprint; });
}

void sortLargestFirst(std::vector<ProjectGroup>& groups) {
    std::ranges::sort(groups, [](const ProjectGroup& a, const ProjectGroup& b) {
        return std::tuple(footprintOf(b), std::string_view(a.root)) <
               std::tuple(footprintOf(a), std::string_view(b.root));
    });
}

}  // namespace

std::vector<ProjectGroup> groups(const World& world, const std::set<Pid>& launchd) {
    std::vector<ProjectGroup> result;
    for (auto& [root, members] : membersByRoot(world, launchd)) {
        if (!members.rows.empty()) result.push_back(groupOf(root, std::move(members)));
    }
    sortLargestFirst(result);
    return result;
}

std::vector<ProcRow> roots(const std::vector<ProcRow>& rows) {
    std::unordered_set<Pid> pids;
    for (const auto& row : rows) pids.insert(row.id());
    std::vector<ProcRow> result;
    std::ranges::copy_if(rows, std::back_inserter(result),
                         [&](const ProcRow& row) { return !pids.contains(row.sample.ppid); });
    return result;
}

std::vector<ProcRow> tops(const std::vector<ProcRow>& rows, const std::vector<ProcRow>& all) {
    std::unordered_map<Pid, const ProcSample*> byPid;
    for (const auto& row : all) byPid.insert_or_assign(row.id(), &row.sample);
    std::unordered_set<Pid> pids;
    for (const auto& row : rows) pids.insert(row.id());
    const auto comesBack = [&](const ProcRow& row) {
        std::unordered_set<Pid> seen;
        for (Pid above = row.sample.ppid; seen.insert(above).second;) {
            if (pids.contains(above)) return true;
            const auto found = byPid.find(above);
            if (found == byPid.end() || !isNamed(*found->second, shells)) return false;
            above = found->second->ppid;
        }
        return false;
    };
    auto result = roots(rows);
    std::erase_if(result, comesBack);
    return result;
}

}  // namespace tolvane::Projects
