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
    /// Absolute path of the project's folder; identifies the group.
    std::string root;
    /// The processes to stop or park, sorted by pid.
    std::vector<ProcRow> rows;
    /// Number of processes left alone: agents, and those that the service manager keeps alive.
    int leftAlone = 0;

    bool operator==(const ProjectGroup&) const = default;
};

}  // namespace tolvane

/// Finds the processes of each project. Pure.
namespace tolvane::Projects {

/// In lower case. Shells are not part of a project, but the processes they start are.
inline constexpr std::array<std::string_view, 8> shells = {"zsh", "bash", "fish",   "sh",
                                                           "nu",  "tmux", "screen", "login"};

/// In lower case. Neither editors nor anything they start is part of a project.
inline constexpr std::array<std::string_view, 8> editors = {"vim",   "nvim", "emacs", "hx",
                                                            "helix", "nano", "micro", "kak"};

/// The projects that have something to stop, largest first, equal ones sorted by root. Programs of the system,
/// processes of other users, this program, shells and anything below an editor are not part of a project. Agents, and
/// processes that are in `managed` or descend from one that is, are counted and left alone.
std::vector<ProjectGroup> groups(const World& world, const std::set<Pid>& managed);

/// The rows whose parent is not among them, in their order.
std::vector<ProcRow> roots(const std::vector<ProcRow>& rows);

/// The roots that no other row started through a shell. Package runners start scripts through a shell, which is not
/// part of the project, and starting the runner again brings those scripts back. `all` are the rows of the machine,
/// shells included.
std::vector<ProcRow> tops(const std::vector<ProcRow>& rows, const std::vector<ProcRow>& all);

}  // namespace tolvane::Projects
