#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "core/sampling/ProcRow.h"

/// Which processes make up a project.
namespace tolvane::Projects {

/// In lower case. They stay out of projects, what they start does not.
inline constexpr std::array<std::string_view, 8> shells = {"zsh", "bash", "fish",   "sh",
                                                           "nu",  "tmux", "screen", "login"};

/// In lower case. They stay out of projects with all that they start.
inline constexpr std::array<std::string_view, 8> editors = {"vim",   "nvim", "emacs", "hx",
                                                            "helix", "nano", "micro", "kak"};

/// The rows whose parent is not among them, in their order.
std::vector<ProcRow> roots(const std::vector<ProcRow>& rows);

}  // namespace tolvane::Projects
