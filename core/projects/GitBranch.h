#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/ChildProcesses.h"

namespace tolvane {

/// The branch according to the repository's files.
struct BranchState {
    /// Short name; unset without a readable repository or when the head is detached.
    std::optional<std::string> branch;
    /// The head names a branch that no longer has a ref.
    bool deleted = false;

    bool operator==(const BranchState&) const = default;
};

/// The same, with what git reports about the upstream.
struct ProjectBranch {
    BranchState state;
    bool remoteGone = false;

    bool operator==(const ProjectBranch&) const = default;
};

}  // namespace tolvane

/// Reads a project's branch from the repository's own files, and asks git about its upstream. Both block: call off the
/// main thread.
namespace tolvane::GitBranch {

/// The branch that is checked out in the folder. Follows linked worktrees, submodules and packed refs. Files that are
/// not UTF-8 text give the empty state. A branch without a commit counts as deleted, because it has no ref yet.
BranchState read(std::string_view root);

/// Whether the remote no longer has the upstream of the branch, as of the latest fetch. False when git cannot be asked.
bool remoteGone(ChildProcesses& children, const std::string& root, const std::string& branch);

}  // namespace tolvane::GitBranch
