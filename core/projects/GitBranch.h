#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/ChildProcesses.h"

namespace tolvane {

/// What a repository's files tell of its branch.
struct BranchState {
    /// Short name; none without a readable repository, or when the head is detached.
    std::optional<std::string> branch;
    /// The head names a branch that is no ref any more.
    bool deleted = false;

    bool operator==(const BranchState&) const = default;
};

/// The same with what git says of the upstream.
struct ProjectBranch {
    BranchState state;
    bool remoteGone = false;

    bool operator==(const ProjectBranch&) const = default;
};

}  // namespace tolvane

/// What a repository tells of its branch: its own files of the branch, git of the upstream. Blocks on both: call it off
/// the main thread.
namespace tolvane::GitBranch {

/// The branch that is checked out in the folder. Linked worktrees, submodules and packed refs are followed.
/// Anything that cannot be read as text in UTF-8 gives the empty state. A branch without any commit yet counts as
/// deleted: nothing in the repository bears its name.
BranchState read(std::string_view root);

/// Whether the branch follows one that its remote no longer has, as far as the latest fetch told. False when git
/// cannot be asked.
bool remoteGone(ChildProcesses& children, const std::string& root, const std::string& branch);

}  // namespace tolvane::GitBranch
