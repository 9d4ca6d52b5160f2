#pragma once

#include <array>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/rules/World.h"
#include "core/sampling/ProcRow.h"

namespace tolvane {

/// The processes of one project, as a unit that can be stopped.
struct ProjectGroup {
    /// Absolute path of the project's folder; names the group.
    std::string root;
    /// What stopping and parking act on, by ascending pid.
    std::vector<ProcRow> rows;
    /// How many further processes of the project are agents or kept alive by the service manager.
    int leftAlone = 0;

    bool operator==(const ProjectGroup&) const = default;
};

}  // namespace tolvane

/// Which processes make up a project. Pure.
namespace tolvane::Projects {

/// In lower case. They stay out of projects, what they start does not.
inline constexpr std::array<std::string_view, 8> shells = {"zsh", "bash", "fish",   "sh",
                                                           "nu",  "tmux", "screen", "login"};

/// In lower case. They stay out of projects with all that they start.
inline constexpr std::array<std::string_view, 8> editors = {"vim",   "nvim", "emacs", "hx",
                                                            "helix", "nano", "micro", "kak"};

/// The projects with something to stop, largest first, by root where they are equal. Programs of the system, other
/// users' processes, this program, shells and whatever runs under an editor are no part of a project; agents, and
/// what is or descends from one of `launchd`, are counted and left alone.
std::vector<ProjectGroup> groups(const World& world, const std::set<Pid>& launchd);

/// The rows whose parent is not among them, in their order.
std::vector<ProcRow> roots(const std::vector<ProcRow>& rows);

/// Those of the roots that nothing among `rows` started through a shell: package runners start scripts through one,
/// which is no part of the project, and bring them back when they are started again themselves. `all` are the rows
/// of the machine, among which the shells are.
std::vector<ProcRow> tops(const std::vector<ProcRow>& rows, const std::vector<ProcRow>& all);

}  // namespace tolvane::Projects
