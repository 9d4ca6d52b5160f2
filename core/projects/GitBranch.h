#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

/// Reads a project's branch from the repository's own files, and what git prints about its upstream.
namespace tolvane::GitBranch {

/// The branch that is checked out in the folder. Follows linked worktrees, submodules and packed refs. Files that are
/// not UTF-8 text give the empty state. A branch without a commit counts as deleted, because it has no ref yet. Blocks
/// on files: call off the main thread.
BranchState read(std::string_view root);

/// The arguments that make git compare the branch with its upstream.
std::vector<std::string> upstreamArguments(const std::string& root, const std::string& branch);

/// Whether git printed that the remote no longer has the upstream of the branch, as of the latest fetch.
bool saysGone(std::string_view printed);

}  // namespace tolvane::GitBranch
