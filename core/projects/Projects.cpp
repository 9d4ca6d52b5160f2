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
#include "core/rules/AgentNames.h"
#include "core/sampling/ProcessTree.h"

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

/// Decides which rows of the machine count toward a project.
class Membership {
public:
    Membership(const World& world, const std::set<Pid>& managed)
        : world_(world), managed_(managed), tree_(world.rows) {}

    /// Not part of any project, and not counted as left alone either.
    bool isBystander(std::uint32_t row) const {
        const auto& sample = world_.rows[row].sample;
        return !world_.mayTouch(sample) || sample.isSystem() || isNamed(sample, shells) ||
               isOrDescendsFrom(row, isEditor);
    }

    bool isLeftAlone(std::uint32_t row) const {
        std::string scratch;
        return world_.rows[row].claudeSession || isAgent(world_.rows[row].sample, scratch) ||
               isOrDescendsFrom(row, [&](const ProcSample& sample) { return managed_.contains(sample.pid); });
    }

private:
    template <typename Test>
    bool isOrDescendsFrom(std::uint32_t row, const Test& test) const {
        return test(world_.rows[row].sample) ||
               tree_.anyAbove(row, ProcessTree::Repeated::last,
                              [&](std::uint32_t above) { return test(world_.rows[above].sample); });
    }

    const World& world_;
    const std::set<Pid>& managed_;
    ProcessTree tree_;
};

MembersByRoot membersByRoot(const World& world, const std::set<Pid>& managed) {
    const Membership membership(world, managed);
    MembersByRoot members;
    for (std::uint32_t index = 0; index < world.rows.size(); ++index) {
        const auto& row = world.rows[index];
        if (!row.project || membership.isBystander(index)) continue;
        auto& project = members[*row.project];
        if (membership.isLeftAlone(index)) {
            ++project.leftAlone;
        } else {
            project.rows.push_back(&row);
        }
    }
    return members;
}

ProjectGroup groupOf(const Text& root, Members members) {
    // All rows stand in one list, so comparing addresses keeps the order of rows that share a pid.
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

std::vector<ProjectGroup> groups(const World& world, const std::set<Pid>& managed) {
    std::vector<ProjectGroup> result;
    for (auto& [root, members] : membersByRoot(world, managed)) {
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
